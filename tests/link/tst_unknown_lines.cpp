#include "link/command_dispatcher.h"
#include "link/unknown_lines.h"
#include "tests/link/running_link.h"
#include "tests/support/test_case.h"

namespace {

QString leftOut(qint64 lines)
{
    return QStringLiteral("control port: %1 lines that mean nothing were left out here").arg(lines);
}

} // namespace

// What anybody on this PC may send does not fill the log.
class UnknownLinesTest : public TestCase
{
    Q_OBJECT

    // As they would stand in the log file, in bytes.
    qint64 logSize() const
    {
        constexpr int frame = 30; // level, time and line end
        qint64 size = 0;
        for (const QString &line : logged())
            size += line.toUtf8().size() + frame;
        return size;
    }

private slots:
    void theFirstOfAKindIsWritten()
    {
        CommandDispatcher dispatcher({[](const QString &) {}, {}});
        dispatcher.processBatch({"a\t1", "b", "a\t2", "a", "b", "Hello\r"});
        QCOMPARE(logged(), (QStringList{"\"a\" \"1\" 0", "\"b\" \"\" 0", "\"Hello\\r\" \"\" 0"}));
        clearLog();
        dispatcher.nextClient();
        QCOMPARE(logged(), QStringList{leftOut(3)});
    }

    void eachClientBeginsAnew()
    {
        CommandDispatcher dispatcher({[](const QString &) {}, {}});
        dispatcher.processBatch({"a"});
        dispatcher.nextClient();
        dispatcher.nextClient();
        dispatcher.processBatch({"a"});
        QCOMPARE(logged(), (QStringList{"\"a\" \"\" 0", "\"a\" \"\" 1"}));
    }

    void eachConnectionIsAnotherClient()
    {
        const RunningLink link;
        for (int connection = 1; connection <= 2; ++connection) {
            Peer peer;
            QVERIFY(peer.connectTo(link.port));
            QVERIFY(peer.send("a\na\na\n"));
            QVERIFY(peer.greet());
            peer.close();
            QVERIFY(eventually([&] { return loggedCount(leftOut(2)) == connection; }));
            QCOMPARE(logged().filter("\"a\" \"\"").size(), connection);
        }
    }

    void commandsAreWrittenEachTime()
    {
        CommandDispatcher dispatcher({[](const QString &) {}, {}});
        dispatcher.processBatch(std::vector<std::string>(5, "DeviceConnectBack\ttrue"));
        QCOMPARE(loggedCount("\"DeviceConnectBack\" \"true\" 0"), 5);
    }

    void aLongLineIsWrittenByItsBeginning()
    {
        CommandDispatcher dispatcher({[](const QString &) {}, {}});
        const std::string a(1000000, 'a');
        const std::string b(1000000, 'b');
        dispatcher.processBatch({a + '\t' + b, a});
        const int length = UnknownLines::longestText;
        QCOMPARE(logged(),
                 QStringList{'"' + QString(length, 'a') + "\" \"" + QString(length, 'b') + "\" 0"});
    }

    void theCountIsWrittenWheneverItHasGrownAThousandfold()
    {
        UnknownLines lines;
        int news = 0;
        for (int i = 0; i < 1000001; ++i)
            news += lines.isNews("a") ? 1 : 0;
        QCOMPARE(news, 1);
        QCOMPARE(logged(), (QStringList{leftOut(1000), leftOut(1000000)}));
        lines.nextClient();
        QCOMPARE(logged().size(), 2); // nothing to add
    }

    void nonsenseWritesLessThanAKilobyte_data()
    {
        QTest::addColumn<QByteArray>("unit");
        QTest::addColumn<int>("megabytes");
        QTest::newRow("a line each") << QByteArray("a\n") << 5;
        QTest::newRow("one line") << QByteArray("a") << 5;
        QTest::newRow("long lines") << QByteArray(100000, 'a') + '\n' << 5;
        QTest::newRow("with arguments") << QByteArray("a\t") + QByteArray(1000, 'a') + '\n' << 1;
        QTest::newRow("empty lines") << QByteArray("\n") << 1;
        QTest::newRow("carriage returns") << QByteArray("\r\n") << 1;
        QTest::newRow("control characters")
            << QByteArray(1000, '\x01') + '\t' + QByteArray(1000, '\x02') + '\n'
            << 1;
    }
    void nonsenseWritesLessThanAKilobyte()
    {
        QFETCH(QByteArray, unit);
        QFETCH(int, megabytes);
        RunningLink link;
        Peer bad;
        QVERIFY(link.join(&bad));
        clearLog();
        const QByteArray all = unit.repeated(megabytes * 1024 * 1024 / unit.size());
        for (int at = 0; at < all.size() && bad.send(all.mid(at, 65536)); at += 65536) {
        }
        bad.close();
        QVERIFY(eventually([&] { return !link.manager->hasClient(); }));
        link.manager.reset();
        QVERIFY2(logSize() < 1000, qPrintable(logged().join('\n')));
    }

    void aThousandKindsAreNoMoreThanAFew()
    {
        UnknownLines lines;
        std::size_t written = 0;
        for (int i = 0; i < 1000; ++i)
            written += lines.isNews(std::to_string(i)) ? 1 : 0;
        QCOMPARE(written, UnknownLines::mostKinds);
    }
};

KOLM_TEST_MAIN(UnknownLinesTest)
#include "tst_unknown_lines.moc"
