#include "steamvr/launch_thread.h"
#include "tests/steamvr/steam_fixture.h"
#include "tests/support/test_case.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSignalSpy>

class TestSteamLaunch : public TestCase
{
    Q_OBJECT

private slots:
    void steamIsLaunchedSilentlyOnThePoolAfterTheRegistrationIsGone()
    {
        SteamFixture pc(dir());
        pc.installSteam();
        pc.writeVrPath(R"({"external_drivers":["C:\\KOLM"]})");
        bool clearedBefore = false;
        pc.pc.launches.on("steam.exe", [&](const SimLaunch &) {
            clearedBefore = pc.vrPath().value("external_drivers").isNull();
            return SimLaunchResult{true, 0, true, 300};
        });
        pc.steam().startSteam();
        QVERIFY(pc.pc.journal.lines().isEmpty()); // returns at once
        QCOMPARE(pc.clock.slept(), 0);
        pc.runPool();
        QCOMPARE(pc.pc.journal.lines(),
                 QStringList{"launch C:\\Steam\\steam.exe -silent (hidden)"});
        QVERIFY(clearedBefore);
        QCOMPARE(pc.clock.slept(), 2000 + 300);
        QCOMPARE(logged().mid(logged().indexOf("[steam] startSteam called")),
                 QStringList({"[steam] startSteam called",
                              "[steam] not launch steam,true num:0,ret:false; external_drivers: "
                              "true",
                              "Successfully cleared external_drivers array (empty array)",
                              "[steam] steam path:C:\\Steam\\steam.exe",
                              "[steam] steam.exe success in 300ms",
                              "[steam] wait for steam.exe complete (max 10s)...",
                              "[steam] startupSteam completed"}));
    }

    void aSecondRequestMeanwhileGetsAToast()
    {
        SteamFixture pc(dir());
        pc.installSteam();
        pc.pc.launches.on("steam.exe", [](const SimLaunch &) { return SimLaunchResult{}; });
        QSignalSpy toasts(&pc.steam(), &SteamManager::showToast);
        pc.steam().startSteam();
        announce("[steam] Steam is starting, return");
        pc.steam().startSteam();
        QCOMPARE(pc.pool.size(), size_t(1));
        QCOMPARE(toasts.size(), 1);
        QCOMPARE(toasts[0][0].toString(), QString("Steam正在启动中，请稍候"));

        pc.runPool();
        pc.steam().startSteam(); // the launch is over: a new one may begin
        QCOMPARE(pc.pool.size(), size_t(1));
    }

    void theEndOfTheProgramDoesNotWaitForSteam()
    {
        SteamFixture pc(dir());
        pc.installSteam();
        pc.pc.launches.on("steam.exe", [](const SimLaunch &) {
            launch_thread::end(); // meanwhile
            return SimLaunchResult{true, 0, true, -1};
        });
        pc.steam().startSteam();
        pc.runPool();
        QCOMPARE(pc.clock.slept(), 2000 + 250);
        QCOMPARE(loggedCount("[steam] the end of the program does not wait for steam.exe"), 1);
        QVERIFY(launch_thread::run([] {})); // the next one is as ever
        QVERIFY(!launch_thread::isToEnd());
    }

    void norIsSteamStartedAfterIt()
    {
        SteamFixture pc(dir());
        pc.installSteam();
        pc.steam().startSteam();
        launch_thread::end();
        pc.runPool();
        QCOMPARE(pc.pc.journal.lines(), QStringList());
        QVERIFY(launch_thread::run([] {}));
    }

    void withoutAThreadTheLaunchFailsAndTheNextOneMaySucceed()
    {
        SteamFixture pc(dir());
        pc.installSteam();
        pc.pc.launches.on("steam.exe", [](const SimLaunch &) { return SimLaunchResult{}; });
        QSignalSpy toasts(&pc.steam(), &SteamManager::showToast);
        pc.poolIsFull = true;
        announce("[steam] startupSteam failed");
        pc.steam().startSteam();
        QCOMPARE(toasts.size(), 0);
        pc.clock.advance(2000);
        QCOMPARE(toasts.size(), 1);
        QCOMPARE(toasts[0][0].toString(), QString("启动Steam失败"));
        const std::optional<LaunchFailure> failure = pc.steam().steamFailure();
        QVERIFY(failure);
        QCOMPARE(failure->file, QString("C:\\Steam\\steam.exe"));
        QCOMPARE(failure->error, 164u);

        pc.poolIsFull = false;
        pc.steam().startSteam();
        pc.runPool();
        QVERIFY(!pc.steam().steamFailure());
        QCOMPARE(toasts.size(), 1);
    }

    void steamThatRunsIsNotLaunched()
    {
        SteamFixture pc(dir());
        pc.installSteam();
        pc.steamRuns();
        pc.steam().startSteam();
        QVERIFY(pc.pool.empty());
        QCOMPARE(loggedCount("[steam] steam is already running"), 1);
    }

    void withoutAPathThereIsAToastAndTheLaunchFails()
    {
        SteamFixture pc(dir());
        QSignalSpy toasts(&pc.steam(), &SteamManager::showToast);
        announce("[steam] Could not find Steam installation path");
        announce("[steam] Cannot find Steam installation path");
        announce("[steam] startupSteam failed");
        pc.steam().startSteam();
        pc.runPool();
        QCOMPARE(toasts.size(), 2);
        QCOMPARE(toasts[0][0].toString(), QString("未找到Steam安装路径"));
        QCOMPARE(toasts[1][0].toString(), QString("启动Steam失败"));
        QVERIFY(pc.pc.journal.lines().isEmpty());
    }

    void aLaunchThatTheSystemRefusesNamesItsError()
    {
        SteamFixture pc(dir());
        pc.installSteam();
        announce("[steam] C:\\Steam\\steam.exe could not be started: The system cannot find the "
                 "file specified. (error 2)");
        announce("[steam] executeExA failed, error:2, elapsed:0ms");
        QVERIFY(!pc.steam().launchSteamExe());
    }

    void whyItFailedIsKeptUntilSteamStarts()
    {
        SteamFixture pc(dir());
        pc.installSteam("D:\\gone");
        QVERIFY(!pc.steam().steamFailure());
        announce("[steam] D:\\gone\\steam.exe could not be started: The system cannot find the "
                 "path specified. (error 3)");
        announce("[steam] executeExA failed, error:3, elapsed:0ms");
        pc.pc.launches.on("steam.exe", [](const SimLaunch &) {
            return SimLaunchResult{false, 3, false, 0};
        });
        pc.steam().launchSteamExe();
        const std::optional<LaunchFailure> failure = pc.steam().steamFailure();
        QVERIFY(failure);
        QCOMPARE(failure->file, QString("D:\\gone\\steam.exe"));
        QCOMPARE(failure->error, 3u);
        QVERIFY(failure->isMissing());
        pc.pc.launches.on("steam.exe", [](const SimLaunch &) { return SimLaunchResult{}; });
        pc.steam().launchSteamExe();
        QVERIFY(!pc.steam().steamFailure());
    }

    void aFileThatIsNoProgramIsNotMissing()
    {
        SteamFixture pc(dir());
        pc.installSteam();
        announce("[steam] C:\\Steam\\steam.exe could not be started: C:\\Steam\\steam.exe is not "
                 "a valid Win32 application. (error 193)");
        announce("[steam] executeExA failed, error:193, elapsed:0ms");
        pc.pc.launches.on("steam.exe", [](const SimLaunch &) {
            return SimLaunchResult{false, 193, false, 0};
        });
        pc.steam().launchSteamExe();
        QVERIFY(pc.steam().steamFailure());
        QVERIFY(!pc.steam().steamFailure()->isMissing());
    }

    void steamThatRunsOnAfterTenSecondsCountsAsStarted()
    {
        SteamFixture pc(dir());
        pc.installSteam();
        pc.pc.launches.on("steam.exe", [](const SimLaunch &) {
            return SimLaunchResult{true, 0, true, -1};
        });
        announce("[steam] steam.exe wait timeout after 10s, 10000ms");
        QVERIFY(pc.steam().launchSteamExe());
        QCOMPARE(pc.clock.slept(), 10000);
    }

    void withoutAProcessHandleNothingIsWaitedFor()
    {
        SteamFixture pc(dir());
        pc.installSteam();
        pc.pc.launches.on("steam.exe", [](const SimLaunch &) {
            return SimLaunchResult{true, 0, false, 0};
        });
        announce("[steam] Process handle is null");
        QVERIFY(pc.steam().launchSteamExe());
        QCOMPARE(pc.clock.slept(), 0);
    }
};

KOLM_TEST_MAIN(TestSteamLaunch)
#include "tst_steam_launch.moc"
