#include "tests/e2e/program.h"
#include "tests/link/peer.h"
#include "tests/support/eventually.h"
#include "tests/support/test_case.h"

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

// The program, which prints for a reader that does not read.
struct Unread
{
    Unread(const QString &dir, const QString &scenario)
        : reader(dir + "/output"), program(dir, scenario)
    {
        program.redirectOutput(dir + "/output");
    }
    bool start() { return reader.isThere() && program.start(); }
    // As the streaming server; the program may not listen yet.
    bool connectServer()
    {
        return eventually([this] { return server.connectTo(9932); }, 30000);
    }
    // Whether so many questions, one after the other, are answered.
    bool answers(int times)
    {
        int answered = 0;
        while (answered < times && server.isAnswered())
            ++answered;
        return answered == times;
    }

    DeafReader reader;
    Program program;
    Peer server;
};

} // namespace

// Whoever has started the program may not care for what it prints.
class TestOutput : public TestCase
{
    Q_OBJECT

private slots:
    void aPipeThatNobodyReadsStopsNothing()
    {
        Unread here(dir(), "external-server");
        QVERIFY(here.start());
        QVERIFY(here.connectServer());
        // Each answer is printed as well: far more than a pipe holds.
        QVERIFY(here.answers(5000));
        QCOMPARE(here.program.close(), 0);
        QVERIFY(!here.program.read(here.program.dataDir() + "/set.json").isEmpty());
    }

    void aReaderThatGoesAwayEndsNothing()
    {
        Unread here(dir(), "external-server");
        QVERIFY(here.start());
        QVERIFY(here.connectServer());
        QVERIFY(here.answers(1));
        here.reader.leave();
        QVERIFY(here.answers(100));
        QCOMPARE(here.program.close(), 0);
    }

    // From the first line on, long before there is a socket.
    void aReaderThatWasNeverThereEndsNothing()
    {
        Unread here(dir(), "one-headset");
        here.program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(here.start());
        here.reader.leave();
        QCOMPARE(here.program.wait(), 0);
    }
};

KOLM_TEST_MAIN(TestOutput)
#include "tst_output.moc"
