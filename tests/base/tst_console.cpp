#include "base/console.h"
#include "tests/support/captured_streams.h"
#include "tests/support/test_case.h"

#include <thread>
#include <vector>

// Breaks on its first use, as a closed pipe would.
class BrokenBuffer : public std::streambuf
{
};

// Gives other threads their chance after every piece of a line.
class YieldingBuffer : public CollectingBuffer<char>
{
protected:
    std::streamsize xsputn(const char *text, std::streamsize size) override
    {
        const std::streamsize written = CollectingBuffer::xsputn(text, size);
        std::this_thread::yield();
        return written;
    }
};

class ConsoleTest : public TestCase
{
    Q_OBJECT

private slots:
    void writesEachLineToItsStream()
    {
        const CapturedStreams streams;
        console::info(L"one");
        console::info(L"");
        console::error(L"two");
        console::echo("three\n");
        QCOMPARE(streams.info(), QString("one\n\n"));
        QCOMPARE(streams.error(), QString("two\n"));
        QCOMPARE(streams.echo(), QByteArray("three\n\n"));
    }

    void writesOnAfterAFailure()
    {
        const CapturedStreams streams;
        {
            BrokenBuffer broken;
            std::streambuf *good = std::cout.rdbuf(&broken);
            console::echo("lost");
            QVERIFY(!std::cout.good());
            // Only the buffer, not the state, which rdbuf() would reset.
            std::ios::iostate state = std::cout.rdstate();
            std::cout.rdbuf(good);
            std::cout.setstate(state);
        }
        console::echo("found");
        QCOMPARE(streams.echo(), QByteArray("found\n"));
    }

    void neverMixesTheLinesOfSeveralThreads()
    {
        constexpr int lines = 2000;
        YieldingBuffer buffer;
        std::streambuf *before = std::cout.rdbuf(&buffer);
        std::vector<std::thread> threads;
        threads.reserve(3);
        for (char letter : {'a', 'b', 'c'})
            threads.emplace_back([letter] {
                for (int i = 0; i < lines; ++i)
                    console::echo(std::string(20, letter));
            });
        for (std::thread &thread : threads)
            thread.join();
        std::cout.rdbuf(before);
        const QList<QByteArray> seen = QByteArray::fromStdString(buffer.text()).split('\n');
        QCOMPARE(seen.size(), 3 * lines + 1);
        for (char letter : {'a', 'b', 'c'})
            QCOMPARE(seen.count(QByteArray(20, letter)), lines);
    }
};

KOLM_TEST_MAIN(ConsoleTest)
#include "tst_console.moc"
