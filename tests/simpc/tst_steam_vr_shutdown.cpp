#include "tests/simpc/steam_world_fixture.h"
#include "tests/support/test_case.h"

class SteamVrShutdownTest : public TestCase
{
    Q_OBJECT

private slots:
    void shutdownTakesSteamVrAwayProcessByProcess()
    {
        SteamWorldFixture w(dir());
        w.options.steamVrCloses = 1500;
        w.options.closingGap = 250;
        w.installReady();
        w.openUrl();
        w.clock.advance(60000);
        QVERIFY(w.steamVrIsUp());
        const SimLaunchResult result = w.shutDown();
        QVERIFY(result.started);
        QVERIFY(result.hasHandle);
        QVERIFY(result.endsAfter >= 0 && result.endsAfter < 5000);
        w.clock.advance(1499);
        QVERIFY(w.steamVrIsUp());
        QList<int> left;
        QStringList serverThen;
        for (int i = 0; i < 5; ++i) {
            w.clock.advance(i == 0 ? 1 : 250);
            left.append(w.running().size());
            serverThen.append(w.server().last());
        }
        QCOMPARE(left, QList<int>({5, 4, 3, 2, 1}));
        QCOMPARE(w.running(), QStringList("steam.exe"));
        // With vrserver.exe, the last but one.
        QCOMPARE(serverThen, QStringList({"start", "start", "start", "stop", "stop"}));
        QCOMPARE(w.pc.events.lines().mid(4),
                 QStringList({"SteamVR closes", "streaming server stops", "SteamVR is closed"}));
    }

    void shutdownEndsAlsoTheTour()
    {
        SteamWorldFixture w(dir());
        w.installReady();
        w.openUrl();
        w.clock.advance(60000);
        w.pc.processes.start("steamtours.exe");
        w.shutDown();
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList("steam.exe"));
    }

    void shutdownOfNothingDoesNothing()
    {
        SteamWorldFixture w(dir());
        w.installReady();
        QVERIFY(w.shutDown().started);
        w.clock.advance(60000);
        QCOMPARE(w.pc.events.lines(), QStringList());
        QCOMPARE(w.server(), QStringList());
        w.openUrl();
        w.clock.advance(60000);
        QVERIFY(w.steamVrIsUp());
    }

    void onlyTheShutdownParameterShutsDown()
    {
        SteamWorldFixture w(dir());
        w.installReady();
        w.openUrl();
        w.clock.advance(60000);
        w.pc.launches.start({vrStartup, "", true});
        w.pc.launches.start({vrStartup, "-Shutdown", true});
        w.clock.advance(60000);
        QVERIFY(w.steamVrIsUp());
    }

    void aShutdownWhileSteamVrComesUpKeepsTheRestAway()
    {
        SteamWorldFixture w(dir());
        w.options.steamVrAppears = 3000;
        w.options.steamVrGap = 200;
        w.installReady();
        w.openUrl();
        w.clock.advance(3300);
        QCOMPARE(w.running().size(), 3);
        w.shutDown();
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList("steam.exe"));
        QCOMPARE(w.server(), QStringList());

        w.openUrl();
        w.clock.advance(60000);
        QVERIFY(w.steamVrIsUp());
        QCOMPARE(w.server(), QStringList("start"));
    }

    void steamVrCannotBeStartedWhileItCloses()
    {
        SteamWorldFixture w(dir());
        w.installReady();
        w.openUrl();
        w.clock.advance(60000);
        w.shutDown();
        w.clock.advance(1800);
        QVERIFY(!w.steamVrIsUp());
        w.openUrl();
        w.shutDown();
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList("steam.exe"));
        QCOMPARE(w.server(), QStringList({"start", "stop"}));
        QCOMPARE(w.pc.events.lines().count("SteamVR closes"), 1);
    }

    void startAndShutdownRepeat()
    {
        SteamWorldFixture w(dir());
        w.installReady();
        for (int round = 1; round <= 4; ++round) {
            w.openUrl();
            w.clock.advance(10000);
            QVERIFY(w.steamVrIsUp());
            QCOMPARE(w.server().count("start"), round);
            QCOMPARE(w.server().count("stop"), round - 1);
            w.shutDown();
            w.clock.advance(10000);
            QCOMPARE(w.running(), QStringList("steam.exe"));
            QCOMPARE(w.server().count("stop"), round);
        }
        QCOMPARE(w.pc.events.lines().count("SteamVR is closed"), 4);
        QVERIFY(!w.pc.timeline.nextChange());
    }

    void leftoverProcessesAreShutDownLikeOthers()
    {
        SteamWorldFixture w(dir());
        w.options.steamVrRunning = true;
        w.installReady();
        w.shutDown();
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList("steam.exe"));
        // No streaming server came with them.
        QCOMPARE(w.server(), QStringList());
        w.openUrl();
        w.clock.advance(60000);
        QCOMPARE(w.server(), QStringList("start"));
    }

    void theStreamingServerGoesHoweverSteamVrsServerEnds()
    {
        SteamWorldFixture w(dir());
        w.installReady();
        w.openUrl();
        w.clock.advance(60000);
        w.pc.timeline.settle();
        w.pc.processes.endAll("vrserver.exe");
        QCOMPARE(w.server(), QStringList({"start", "stop"}));
        w.shutDown();
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList("steam.exe"));
        QCOMPARE(w.server(), QStringList({"start", "stop"}));
    }

    void aShutdownThatOthersFinishedDoesNotTouchTheNextRun()
    {
        SteamWorldFixture w(dir());
        w.options.steamVrAppears = 100;
        w.options.steamVrGap = 10;
        w.options.steamVrCloses = 5000;
        w.installReady();
        w.openUrl();
        w.clock.advance(2000);
        QVERIFY(w.steamVrIsUp());
        w.shutDown();
        for (const QString &name : allOfSteamVr)
            w.pc.processes.endAll(name);
        w.openUrl();
        w.clock.advance(60000);
        QVERIFY(w.steamVrIsUp());
    }
};

KOLM_TEST_MAIN(SteamVrShutdownTest)
#include "tst_steam_vr_shutdown.moc"
