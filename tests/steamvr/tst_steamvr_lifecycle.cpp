#include "base/threads.h"
#include "tests/steamvr/steam_fixture.h"
#include "tests/support/test_case.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QSignalSpy>

#include <thread>

namespace {

const QStringList steamVRProcesses = {"vrserver.exe",   "vrmonitor.exe",   "vrwebhelper.exe",
                                      "steamtours.exe", "vrdashboard.exe", "vrcompositor.exe"};

} // namespace

class TestSteamVRLifecycle : public TestCase
{
    Q_OBJECT

private slots:
    void startRegistersZeroesTheCellAndAsksSteamInThisOrder()
    {
        SteamFixture pc(dir());
        pc.steamRuns();
        QJsonValue registered;
        pc.pc.launches.on("explorer", [&](const SimLaunch &) {
            registered = pc.vrPath().value("external_drivers");
            return SimLaunchResult{};
        });
        clearLog();
        pc.steam().startSteamVR();
        QCOMPARE(pc.pc.journal.lines(),
                 QStringList({"cell write 0", "launch explorer steam://rungameid/250820"}));
        QCOMPARE(registered, QJsonValue(QJsonArray{"C:/KOLM"}));
        QCOMPARE(logged(), QStringList({"Successfully set external_drivers to:C:/KOLM",
                                        "[steam] startSteamVR"}));
        quint32 value = 1;
        QVERIFY(pc.pc.cell().read(&value));
        QCOMPARE(value, 0u);
    }

    void whileSteamDoesNotCountAsRunningNothingHappens()
    {
        SteamFixture pc(dir());
        pc.pc.processes.start("steam.exe");
        pc.pc.processes.endAll("steam.exe");
        pc.steam().hasLaunchSteam();
        pc.pc.processes.start("steam.exe"); // seen once only
        clearLog();
        pc.steam().startSteamVR();
        QVERIFY(pc.pc.journal.lines().isEmpty());
        QCOMPARE(logged(), QStringList{"[steam] lanunched steam,true num:1,ret:false; "
                                       "external_drivers: false"});
        QVERIFY(pc.vrPath().value("external_drivers").isNull());
    }

    void theRegistrationGoesWhenTheCellSaysThatTheServerIsUp()
    {
        SteamFixture pc(dir());
        pc.steamRuns();
        pc.pc.launches.on("explorer", [](const SimLaunch &) { return SimLaunchResult{}; });
        pc.steam().startSteamVR();
        pc.clock.advance(3600 * 1000); // no limit in time
        QVERIFY(pc.vrPath().value("external_drivers").isArray());
        pc.pc.cell().write(2); // any other value says nothing
        pc.clock.advance(50);
        QVERIFY(pc.vrPath().value("external_drivers").isArray());
        pc.pc.cell().write(1);
        pc.clock.advance(50);
        QVERIFY(pc.vrPath().value("external_drivers").isNull());
        QCOMPARE(loggedCount("[steam] vrserver.exe detected, clearing VR config"), 1);
        QVERIFY(pc.clock.idle()); // the watcher looks no more
    }

    void theWatcherLooksEveryFiftyMilliseconds()
    {
        SteamFixture pc(dir());
        pc.steamRuns();
        pc.pc.launches.on("explorer", [](const SimLaunch &) { return SimLaunchResult{}; });
        pc.steam().startSteamVR();
        pc.pc.cell().write(1);
        pc.clock.advance(49);
        QVERIFY(pc.vrPath().value("external_drivers").isArray());
        pc.clock.advance(1);
        QVERIFY(pc.vrPath().value("external_drivers").isNull());
    }

    void withoutAThreadTheRegistrationGoesAllTheSame()
    {
        SteamFixture pc(dir());
        pc.steamRuns();
        pc.pc.launches.on("explorer", [](const SimLaunch &) { return SimLaunchResult{}; });
        announce("[steam] no thread to watch SteamVR's server on, watched between other things");
        {
            const threads::NoneToHave none;
            pc.steam().startSteamVR();
        }
        pc.clock.advance(3600 * 1000);
        QVERIFY(pc.vrPath().value("external_drivers").isArray());
        pc.pc.cell().write(1);
        pc.clock.advance(50);
        QVERIFY(pc.vrPath().value("external_drivers").isNull());
        QVERIFY(pc.clock.idle());
    }

    void aWatcherThatStillWaitsEndsWithTheManager()
    {
        SteamFixture pc(dir());
        pc.steamRuns();
        pc.pc.launches.on("explorer", [](const SimLaunch &) { return SimLaunchResult{}; });
        pc.steam().startSteamVR();
        pc.steam().startSteamVR(); // each start has a watcher of its own
        pc.clock.advance(50);
        pc.dropSteam();
        pc.pc.cell().write(1);
        pc.clock.advance(50);
        QVERIFY(pc.vrPath().value("external_drivers").isArray());
        QVERIFY(pc.clock.idle());
    }

    void stopWithNothingRunningOnlyClearsAndLogs()
    {
        SteamFixture pc(dir());
        pc.installSteamVR();
        pc.writeVrPath(R"({"external_drivers":["C:\\KOLM"]})");
        pc.steam();
        clearLog();
        pc.steam().stopSteamVR();
        QVERIFY(pc.pc.journal.lines().isEmpty());
        QCOMPARE(pc.clock.slept(), 0);
        QCOMPARE(logged(), QStringList({"Successfully cleared external_drivers array (empty array)",
                                        "[steam] stopSteamVR"}));
    }

    void anyOfTheSixProcessesMakesStopShutSteamVRDown_data()
    {
        QTest::addColumn<QString>("process");
        for (const QString &name : steamVRProcesses)
            QTest::newRow(qPrintable(name)) << name;
    }
    void anyOfTheSixProcessesMakesStopShutSteamVRDown()
    {
        QFETCH(QString, process);
        SteamFixture pc(dir());
        pc.installSteamVR("D:\\VR");
        pc.pc.processes.start(process);
        pc.pc.launches.on("vrstartup.exe", [&](const SimLaunch &) {
            pc.pc.timeline.after(3500, [&] { pc.pc.processes.endAll(process); });
            return SimLaunchResult{true, 0, true, 500};
        });
        SteamManager &steam = pc.steam();
        const int before = pc.pc.processes.listings();
        steam.stopSteamVR();
        QCOMPARE(pc.pc.journal.lines(),
                 QStringList{"launch D:\\VR\\bin\\win64\\vrstartup.exe -shutdown (hidden)"});
        QVERIFY(!pc.pc.processes.isRunning(process));
        // 500 for the command, three rounds of 1000 until 3500 are over, 2500 more.
        QCOMPARE(pc.clock.slept(), 500 + 3 * 1000 + 2500);
        // Five looks at all six names: before the command, after it, after each round.
        QCOMPARE(pc.pc.processes.listings() - before, 5);
    }

    void aFolderTooLongForTheNarrowCallsStartsNothing()
    {
        SteamFixture pc(dir());
        pc.installSteamVR("D:\\" + QString(260, 'V'));
        pc.pc.processes.start("vrserver.exe");
        pc.pc.timeline.after(1500, [&] { pc.pc.processes.endAll("vrserver.exe"); });
        pc.steam().stopSteamVR();
        QCOMPARE(pc.pc.journal.lines(), QStringList());
        QVERIFY(!pc.pc.processes.isRunning("vrserver.exe"));
    }

    void whatCannotAskSteamVRToCloseIsSaidBeforeTheWait()
    {
        SteamFixture pc(dir());
        pc.installSteamVR("D:\\moved");
        pc.pc.processes.start("vrserver.exe");
        qint64 toldAt = -1;
        QString told;
        connect(&pc.steam(), &SteamManager::showToast, [&](const QString &text) {
            told = text;
            toldAt = pc.clock.slept();
        });
        pc.pc.timeline.after(5500, [&] { pc.pc.processes.endAll("vrserver.exe"); });
        announce("[steam] D:\\moved\\bin\\win64\\vrstartup.exe could not be started: The system "
                 "cannot find the file specified. (error 2)");
        pc.steam().stopSteamVR();
        QCOMPARE(told, QString("SteamVR未能自动关闭，请手动关闭"));
        QCOMPARE(toldAt, 0);
        QCOMPARE(pc.clock.slept(), 6000 + 2500); // it waits all the same
        QVERIFY(pc.steam().stopFailure());
        QCOMPARE(pc.steam().stopFailure()->file, QString("D:\\moved\\bin\\win64\\vrstartup.exe"));
        // Until one goes well.
        pc.pc.processes.start("vrserver.exe");
        pc.pc.launches.on("vrstartup.exe", [&](const SimLaunch &) {
            pc.pc.processes.endAll("vrserver.exe");
            return SimLaunchResult{};
        });
        told.clear();
        pc.steam().stopSteamVR();
        QVERIFY(!pc.steam().stopFailure());
        QCOMPARE(told, QString());
    }

    void anEarlierFailureIsNotThatOfTheNextStop()
    {
        SteamFixture pc(dir());
        pc.installSteamVR("D:\\moved");
        pc.pc.processes.start("vrserver.exe");
        pc.pc.timeline.after(500, [&] { pc.pc.processes.endAll("vrserver.exe"); });
        announce("[steam] D:\\moved\\bin\\win64\\vrstartup.exe could not be started: The system "
                 "cannot find the file specified. (error 2)");
        pc.steam().stopSteamVR();
        QVERIFY(pc.steam().stopFailure());

        pc.steam().stopSteamVR(); // there is nothing to stop
        QVERIFY(!pc.steam().stopFailure());
    }

    void aShutdownCommandThatRunsOnIsWaitedForFiveSeconds()
    {
        SteamFixture pc(dir());
        pc.installSteamVR();
        pc.pc.processes.start("vrserver.exe");
        pc.pc.launches.on("vrstartup.exe", [&](const SimLaunch &) {
            pc.pc.processes.endAll("vrserver.exe");
            return SimLaunchResult{true, 0, true, -1};
        });
        pc.steam().stopSteamVR();
        QCOMPARE(pc.clock.slept(), 5000 + 2500);
    }

    void withoutSteamVRInstalledStopWaitsForTheProcessesAllTheSame()
    {
        SteamFixture pc(dir());
        pc.pc.processes.start("vrcompositor.exe");
        pc.pc.timeline.after(60500, [&] { pc.pc.processes.endAll("vrcompositor.exe"); });
        pc.steam().stopSteamVR();
        QVERIFY(pc.pc.journal.lines().isEmpty());
        QCOMPARE(pc.clock.slept(), 61000 + 2500);
    }

    void restartStopsStoresThenToastsAfterFourAndStartsAfterTenSeconds()
    {
        SteamFixture pc(dir());
        pc.steamRuns();
        pc.pc.launches.on("explorer", [](const SimLaunch &) { return SimLaunchResult{}; });
        QSignalSpy toasts(&pc.steam(), &SteamManager::showToast);
        pc.steam().setRestartSerial("D2X");
        pc.config.loadDeviceSettings(false, 0);
        clearLog();
        pc.steam().restartSteamVR();
        QCOMPARE(pc.clock.slept(), 1500);
        QCOMPARE(logged().first(), QString("[steam] restartSteamVR"));
        QCOMPARE(pc.config.serial(), QString("D2X"));
        QVERIFY(!readFile("set.json").isEmpty());
        pc.clock.advance(3999);
        QVERIFY(toasts.isEmpty());
        pc.clock.advance(1);
        QCOMPARE(toasts.size(), 1);
        QCOMPARE(toasts[0][0].toString(), QString("正在重启，请等待"));
        pc.clock.advance(5999);
        QVERIFY(pc.pc.journal.lines().isEmpty());
        pc.clock.advance(1);
        QCOMPARE(pc.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
    }

    void fromAnotherThreadStartAndStopArePosted()
    {
        SteamFixture pc(dir());
        pc.steamRuns();
        pc.pc.launches.on("explorer", [](const SimLaunch &) { return SimLaunchResult{}; });
        announce("[steam] stopSteamVR thread");
        announce("[steam] startSteamVR thread");
        std::thread([&] {
            pc.steam().stopSteamVR();
            pc.steam().startSteamVR();
        }).join();
        QVERIFY(pc.pc.journal.lines().isEmpty());
        QCOMPARE(loggedCount("[steam] stopSteamVR"), 0);
        QCoreApplication::processEvents();
        QCOMPARE(loggedCount("[steam] stopSteamVR"), 1);
        QCOMPARE(pc.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
    }

    void aRestartFromTheLinksThreadIsCarriedOutOnTheObjectsThread()
    {
        SteamFixture pc(dir());
        pc.steamRuns();
        pc.installSteamVR();
        pc.pc.processes.start("vrserver.exe");
        pc.pc.launches.on("explorer", [](const SimLaunch &) { return SimLaunchResult{}; });
        pc.pc.launches.on("vrstartup.exe", [&](const SimLaunch &) {
            pc.pc.processes.endAll("vrserver.exe");
            return SimLaunchResult{};
        });
        QSignalSpy toasts(&pc.steam(), &SteamManager::showToast);
        pc.config.loadDeviceSettings(false, 0);
        announce("[steam] stopSteamVR thread");
        std::thread([&] { pc.steam().restartSteamVR(); }).join();
        QVERIFY(pc.pc.journal.lines().isEmpty());
        QCoreApplication::processEvents();
        QCOMPARE(pc.pc.journal.lines().size(), 1); // the shutdown
        pc.clock.advance(4000);
        QCOMPARE(toasts.size(), 1);
        pc.clock.advance(6000);
        QCOMPARE(pc.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
    }
};

KOLM_TEST_MAIN(TestSteamVRLifecycle)
#include "tst_steamvr_lifecycle.moc"
