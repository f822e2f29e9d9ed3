#include "tests/e2e/program.h"
#include "tests/support/test_case.h"

#include <QDeadlineTimer>
#include <QTcpSocket>

#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// A reader of the program's output who does not read.
class DeafReader
{
public:
    explicit DeafReader(const QString &path) : path_(path.toUtf8())
    {
        if (mkfifo(path_.constData(), 0600) == 0)
            end_ = open(path_.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }
    ~DeafReader() { leave(); }
    DeafReader(const DeafReader &) = delete;
    DeafReader &operator=(const DeafReader &) = delete;

    bool isThere() const { return end_ >= 0; }
    void leave()
    {
        if (end_ >= 0)
            close(end_);
        end_ = -1;
    }

private:
    const QByteArray path_;
    int end_ = -1;
};

// The streaming server, which asks whether somebody is there.
struct Asking
{
    // The program may not listen yet.
    bool connect()
    {
        const QDeadlineTimer deadline(30000);
        while (!deadline.hasExpired()) {
            socket.connectToHost("127.0.0.1", 9932);
            if (socket.waitForConnected(5000))
                return true;
            std::this_thread::yield();
        }
        return false;
    }

    // Whether each of so many questions, one after the other, is answered.
    bool ask(int times)
    {
        const QByteArray answer("HHHH, You can see me!\n\0", 23);
        for (int i = 0; i < times; ++i) {
            socket.write("Hello\n");
            QByteArray seen;
            while (!seen.contains(answer)) {
                if (!socket.waitForReadyRead(20000))
                    return false;
                seen += socket.readAll();
            }
        }
        return true;
    }

    QTcpSocket socket;
};

} // namespace

// Whoever has started the program may not care for what it prints.
class TestOutput : public TestCase
{
    Q_OBJECT

private slots:
    void aPipeThatNobodyReadsStopsNothing()
    {
        DeafReader reader(path("output"));
        QVERIFY(reader.isThere());
        Program program(dir(), "external-server");
        program.redirectOutput(path("output"));
        QVERIFY(program.start());
        Asking server;
        QVERIFY(server.connect());
        // Each answer is printed as well: far more than a pipe holds.
        QVERIFY(server.ask(5000));
        QCOMPARE(program.close(), 0);
        QVERIFY(!program.read(program.dataDir() + "/set.json").isEmpty());
    }

    void aReaderThatGoesAwayEndsNothing()
    {
        DeafReader reader(path("output"));
        QVERIFY(reader.isThere());
        Program program(dir(), "external-server");
        program.redirectOutput(path("output"));
        QVERIFY(program.start());
        Asking server;
        QVERIFY(server.connect());
        QVERIFY(server.ask(1));
        reader.leave();
        QVERIFY(server.ask(100));
        QCOMPARE(program.close(), 0);
    }

    // From the first line on, long before there is a socket.
    void aReaderThatWasNeverThereEndsNothing()
    {
        DeafReader reader(path("output"));
        QVERIFY(reader.isThere());
        Program program(dir(), "one-headset");
        program.environment.insert("SIMPC_UNTIL", "connected");
        program.redirectOutput(path("output"));
        QVERIFY(program.start());
        reader.leave();
        QCOMPARE(program.wait(), 0);
    }
};

KOLM_TEST_MAIN(TestOutput)
#include "tst_output.moc"
