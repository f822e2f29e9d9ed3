#include "checks/steam_watch.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

class TestSteamWatch : public TestCase
{
    Q_OBJECT

private slots:
    void beforeTheFirstLookNothingRuns()
    {
        PcFixture pc(dir(), steamThatIs(true, true));
        const SteamWatch watch(pc.steam);
        QVERIFY(watch.steamInstalled());
        QVERIFY(!watch.steamRunning());
        QVERIFY(!watch.steamVRRunning());
        QCOMPARE(watch.state(), SteamWatch::NoneSteam);
    }

    void theStateSaysWhetherSteamIsInstalled()
    {
        PcFixture pc(dir(), steamThatIs(true, false));
        SteamWatch watch(pc.steam);
        QSignalSpy states(&watch, &SteamWatch::stateChanged);
        watch.checkInstalled();
        watch.checkInstalled();
        QCOMPARE(watch.state(), SteamWatch::Pass);
        QCOMPARE(states.size(), 1);
    }

    void withoutSteamTheStateSaysSoUntilSteamRuns()
    {
        PcFixture pc(dir(), steamThatIs(false, false));
        SteamWatch watch(pc.steam);
        QSignalSpy states(&watch, &SteamWatch::stateChanged);
        QSignalSpy running(&watch, &SteamWatch::steamRunningChanged);
        watch.checkInstalled();
        QCOMPARE(watch.state(), SteamWatch::NoneSteam);
        QVERIFY(states.isEmpty()); // it was the state from the beginning

        pc.pc.processes.start("steam.exe");
        for (int i = 0; i < 4; ++i)
            watch.checkSteam();
        QCOMPARE(running.size(), 1);
        QCOMPARE(watch.state(), SteamWatch::Pass);
        pc.pc.processes.endAll("steam.exe");
        watch.checkSteam();
        QCOMPARE(running.size(), 2);
        QCOMPARE(watch.state(), SteamWatch::NoneSteam);
        QCOMPARE(states.size(), 2);
    }

    void withSteamInstalledItsStateDoesNotFollowItsRunning()
    {
        PcFixture pc(dir(), steamThatIs(true, true));
        SteamWatch watch(pc.steam);
        watch.checkInstalled();
        QSignalSpy states(&watch, &SteamWatch::stateChanged);
        watch.checkSteam();
        QVERIFY(watch.steamRunning());
        pc.pc.processes.endAll("steam.exe");
        watch.checkSteam();
        QVERIFY(!watch.steamRunning());
        QVERIFY(states.isEmpty());
    }

    void steamVRsStateIsAnnouncedWhenItChanges()
    {
        PcFixture pc(dir(), steamThatIs(true, true));
        SteamWatch watch(pc.steam);
        QSignalSpy changes(&watch, &SteamWatch::steamVRRunningChanged);
        pc.pc.processes.start("vrmonitor.exe");
        watch.checkSteamVR();
        watch.checkSteamVR();
        QCOMPARE(changes.size(), 1);
        QVERIFY(watch.steamVRRunning());
    }

    void aLaunchedSteamVRCountsAsRunning()
    {
        PcFixture pc(dir(), steamThatIs(true, true));
        SteamWatch watch(pc.steam);
        QSignalSpy changes(&watch, &SteamWatch::steamVRRunningChanged);
        watch.steamVRLaunched();
        QVERIFY(watch.steamVRRunning());
        QCOMPARE(changes.size(), 1);
    }
};

KOLM_TEST_MAIN(TestSteamWatch)
#include "tst_steam_watch.moc"
