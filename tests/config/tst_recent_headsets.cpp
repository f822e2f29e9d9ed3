#include "config/recent_headsets.h"
#include "tests/base/denied_access.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>

class TestRecentHeadsets : public TestCase
{
    Q_OBJECT

private slots:
    void theListIsReadFromItsText_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("serials");
        QTest::addColumn<QByteArray>("writtenBack");
        const auto add = [](const char *name, const QByteArray &text, const QStringList &serials,
                            const QByteArray &writtenBack) {
            QTest::newRow(name) << text << serials << writtenBack;
        };
        add("empty", "", {}, "");
        add("one", "D3-1", {"D3-1"}, "D3-1");
        add("two", "D3-1;D2-2", {"D3-1", "D2-2"}, "D3-1;D2-2");
        add("doubled and trailing separators", "A;;B;", {"A", "B"}, "A;B");
        add("leading separators", ";;A", {"A"}, "A");
        add("only separators", ";;;", {}, "");
        add("the same twice", "A;A", {"A", "A"}, "A;A");
        add("blanks and line ends stay", " A ;B\r\n", {" A ", "B\r\n"}, " A ;B\r\n");
        add("UTF-8", "中文;é", {QString("中文"), QString("é")}, "中文;é");
        add("invalid UTF-8", "A\xff;B", {QString("A") + QChar(0xfffd), "B"}, "A\xef\xbf\xbd;B");
        add("a null byte", QByteArray("A\0B;C", 5), {QString("A") + QChar(0) + "B", "C"},
            QByteArray("A\0B;C", 5));
    }

    void theListIsReadFromItsText()
    {
        QFETCH(QByteArray, text);
        QFETCH(QStringList, serials);
        writeFile("setting.inf", text);

        QCOMPARE(recent_headsets::load(dir()), serials);
        QCOMPARE(readFile("setting.inf"), text);

        QCOMPARE(recent_headsets::save(dir(), serials), WriteResult::Ok);
        QTEST(readFile("setting.inf"), "writtenBack");
    }

    void theListIsWrittenAsText_data()
    {
        QTest::addColumn<QStringList>("serials");
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("none") << QStringList() << QByteArray("");
        QTest::newRow("one") << QStringList({"D3-1"}) << QByteArray("D3-1");
        QTest::newRow("three") << QStringList({"C", "A", "B"}) << QByteArray("C;A;B");
    }

    void theListIsWrittenAsText()
    {
        QFETCH(QStringList, serials);
        for (const char *before : {"", "a much longer text than afterwards"}) {
            if (*before)
                writeFile("setting.inf", before);

            QCOMPARE(recent_headsets::save(dir(), serials), WriteResult::Ok);

            QVERIFY(QFile::exists(path("setting.inf")));
            QTEST(readFile("setting.inf"), "text");
        }
        QCOMPARE(QDir(dir()).entryList(QDir::Files | QDir::Hidden), QStringList({"setting.inf"}));
    }

    void whatIsWrittenIsReadBack()
    {
        QStringList serials;
        for (int i = 0; i < 100000; ++i)
            serials << "D3-" + QString::number(i);

        QCOMPARE(recent_headsets::save(dir(), serials), WriteResult::Ok);

        QCOMPARE(recent_headsets::load(dir()), serials);
    }

    void aFileThatCannotBeReadIsAnEmptyListAndStays()
    {
        QCOMPARE(recent_headsets::load(dir()), QStringList());
        QVERIFY(!QFile::exists(path("setting.inf")));
        {
            writeFile("setting.inf", "A");
            const LockedFile obstacle(path("setting.inf"));
            QVERIFY(obstacle.works());
            QCOMPARE(recent_headsets::load(dir()), QStringList());
        }
        QCOMPARE(readFile("setting.inf"), QByteArray("A"));
        QVERIFY(QFile::remove(path("setting.inf")));
        QVERIFY(QDir(dir()).mkpath("setting.inf"));
        QCOMPARE(recent_headsets::load(dir()), QStringList());
        QVERIFY(QDir(path("setting.inf")).exists());
    }

    void failuresToWriteLeaveWhatIsThere()
    {
        QVERIFY(recent_headsets::save(path("missing"), {"B"}) != WriteResult::Ok);
        QVERIFY(QDir(dir()).isEmpty());

        QVERIFY(QDir(dir()).mkpath("setting.inf/inside"));
        QCOMPARE(recent_headsets::save(dir(), {"B"}), WriteResult::OpenFailed);
        QVERIFY(QDir(path("setting.inf/inside")).exists());
        QVERIFY(QDir(path("setting.inf")).removeRecursively());

        writeFile("setting.inf", "A");
        const ReadOnlyFile obstacle(path("setting.inf"));
        if (!obstacle.works())
            QSKIP("This user may write every file.");
        QCOMPARE(recent_headsets::save(dir(), {"B"}), WriteResult::OpenFailed);
        QCOMPARE(readFile("setting.inf"), QByteArray("A"));
        QCOMPARE(logged(), QStringList());
    }
};

KOLM_TEST_MAIN(TestRecentHeadsets)
#include "tst_recent_headsets.moc"
