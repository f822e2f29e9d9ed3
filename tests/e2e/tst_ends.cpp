#include "tests/e2e/program.h"
#include "tests/link/peer.h"
#include "tests/support/eventually.h"
#include "tests/support/test_case.h"

#include <QFile>

// The end of the real program while others do not answer: what the user has set is
// stored, and nobody is waited for.
class TestEnds : public TestCase
{
    Q_OBJECT

private slots:
    void aNameServerThatNeverAnswers()
    {
        Program program(dir(), "steam-already-running");
        program.environment.insert("LD_PRELOAD", SLOW_NAMES);
        program.environment.insert("SLOW_NAMES_ASKED", path("asked"));
        program.environment.insert("SIMPC_CLOUD_HOST", "cloud.example");
        program.environment.insert("SIMPC_UNTIL", "connected");
        QVERIFY(program.start());
        QCOMPARE(program.wait(60000), 0);
        QVERIFY(QFile::exists(path("asked")));
        const QJsonObject stored = program.json(program.dataDir() + "/set.json");
        QVERIFY(!stored.value("lastSn").toString().isEmpty());
    }

    void restartsThatWait()
    {
        Program program(dir(), "server-never-comes");
        program.environment.remove("SIMPC_LIMIT");
        QVERIFY(program.start());
        Peer server;
        QVERIFY(eventually([&] { return server.connectTo(9932); }, 30000));
        QVERIFY(program.waitForOutput("[x] SteamVR runs"));
        QVERIFY(server.send(QByteArray("RESTARTSTEAMVR\n").repeated(66)));
        QVERIFY(
            eventually([&] { return program.log().contains("[steam] restartSteamVR"); }, 30000));
        QCOMPARE(program.close(), 0);
        // Whatever came together is one, and what came later is not begun any more.
        QVERIFY(program.log().count("[steam] restartSteamVR") <= 2);
        QVERIFY(!program.json(program.dataDir() + "/set.json").isEmpty());
    }
};

KOLM_TEST_MAIN(TestEnds)
#include "tst_ends.moc"
