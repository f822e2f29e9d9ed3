#include "base/detached_output.h"
#include "tests/base/pipe.h"
#include "tests/support/test_case.h"

#include <QElapsedTimer>

#include <ostream>

namespace {

// More than any system keeps in a pipe.
const std::string manyLines = [] {
    std::string lines;
    for (int i = 0; i < 10000; ++i)
        lines += std::to_string(i) + " a line that somebody may read or not\n";
    return lines;
}();

// With more than waits for anybody.
void flood(DetachedOutput &output)
{
    for (int i = 0; i < 100; ++i)
        output.write(manyLines);
}

} // namespace

class DetachedOutputTest : public TestCase
{
    Q_OBJECT

private slots:
    void everythingArrivesInItsOrder()
    {
        Pipe pipe;
        DetachedOutput output(pipe.writeEnd());
        QByteArray expected;
        for (int i = 0; i < 1000; ++i) {
            const std::string line = std::to_string(i) + '\n';
            output.write(line);
            expected += QByteArray::fromStdString(line);
        }
        QByteArray seen;
        while (seen.size() < expected.size())
            seen += pipe.read(100);
        QCOMPARE(seen, expected);
        QVERIFY(output.finish());
    }

    void nobodyWaitsForOneWhoDoesNotRead()
    {
        Pipe pipe;
        DetachedOutput output(pipe.writeEnd());
        flood(output);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!output.finish());
        QVERIFY2(timer.elapsed() < 2000, qPrintable(QString::number(timer.elapsed())));
        // What waits ends with the reader.
        pipe.closeReadEnd();
        QVERIFY(output.finish());
    }

    void whatIsTooMuchIsLeftOutWhole()
    {
        Pipe pipe;
        DetachedOutput output(pipe.writeEnd());
        flood(output);
        QByteArray seen;
        while (!seen.endsWith("end\n")) {
            seen += pipe.read(1000000);
            // Lost as long as there is no room for it.
            if (!seen.contains("end\n"))
                output.write("end\n");
        }
        const QByteArray all = QByteArray::fromStdString(manyLines);
        QVERIFY(seen.count(all) >= 2);
        QVERIFY(seen.count(all) < 100);
        seen.replace(all, "");
        QVERIFY2(QByteArray("end\n").repeated(seen.size() / 4) == seen, seen.constData());
        QVERIFY(output.finish());
    }

    void aReaderThatGoesAwayHarmsNothing()
    {
        Pipe pipe;
        DetachedOutput output(pipe.writeEnd());
        output.write("seen\n");
        QCOMPARE(pipe.read(5), QByteArray("seen\n"));
        pipe.closeReadEnd();
        flood(output);
        QVERIFY(output.finish());
    }

    void aDescriptorThatIsNoneHarmsNothing()
    {
        DetachedOutput output(-1);
        output.write("lost\n");
        QVERIFY(output.finish());
    }

    void whatIsLeftAtTheEndIsWrittenByAndBy()
    {
        Pipe pipe;
        {
            DetachedOutput output(pipe.writeEnd());
            output.write(manyLines);
        }
        QByteArray seen;
        while (seen.size() < static_cast<int>(manyLines.size()))
            seen += pipe.read(1000);
        QVERIFY(seen == QByteArray::fromStdString(manyLines));
    }

    void streamsHandOverEachLine()
    {
        Pipe pipe;
        DetachedOutput output(pipe.writeEnd());
        DetachedBuffer<char> narrow(output);
        DetachedBuffer<wchar_t> wide(output);
        std::ostream echo(&narrow);
        std::wostream info(&wide);
        echo << "one " << 1 << std::endl;
        info << L"two " << 2 << std::endl;
        echo << 't' << "hree" << std::endl;
        QVERIFY(output.finish());
        QCOMPARE(pipe.read(100), QByteArray("one 1\ntwo 2\nthree\n"));
    }
};

KOLM_TEST_MAIN(DetachedOutputTest)
#include "tst_detached_output.moc"
