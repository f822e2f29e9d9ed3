#include "tests/simpc/steam_world_fixture.h"
#include "tests/support/test_case.h"

class SteamWorldTest : public TestCase
{
    Q_OBJECT

private slots:
    void theRegistrySaysWhereSteamAndSteamVrAre()
    {
        SteamWorldFixture w(dir());
        w.options.steamPath = "D:\\Games\\Steam";
        w.options.steamVrPath = "E:\\SteamVR";
        w.install();
        const QString uninstall = "Microsoft\\Windows\\CurrentVersion\\Uninstall";
        const QString listed =
            "HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\" + uninstall + "\\Steam";
        QCOMPARE(w.pc.registry
                     .text("HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Valve\\Steam", "InstallPath")
                     .value_or("-"),
                 QString("D:\\Games\\Steam"));
        QCOMPARE(w.pc.registry.text(listed, "DisplayName").value_or("-"), QString("Steam"));
        QCOMPARE(w.pc.registry.text(listed, "InstallLocation").value_or("-"),
                 QString("D:\\Games\\Steam"));
        QCOMPARE(w.pc.registry
                     .text("HKEY_LOCAL_MACHINE\\SOFTWARE\\" + uninstall + "\\Steam App 250820",
                           "InstallLocation")
                     .value_or("-"),
                 QString("E:\\SteamVR"));
        QCOMPARE(w.running(), QStringList());
    }

    void withoutSteamTheRegistryIsSilentAndNothingCanBeLaunched()
    {
        SteamWorldFixture w(dir());
        w.options.steamInstalled = false;
        w.options.steamVrInstalled = false;
        w.install();
        QVERIFY(!w.pc.registry.keyExists("HKEY_LOCAL_MACHINE"));
        QCOMPARE(w.pc.launches.start({steamProgram, "-silent", true}).error, 2u);
        QCOMPARE(w.shutDown().error, 2u);
    }

    void steamMayBeThereWithoutBeingListed()
    {
        SteamWorldFixture w(dir());
        w.options.steamListed = false;
        w.install();
        const QString node = "HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node";
        QVERIFY(w.pc.registry.keyExists(node + "\\Valve\\Steam"));
        QVERIFY(!w.pc.registry.keyExists(node + "\\Microsoft"));
    }

    void whatRunsAtTheBeginningRuns()
    {
        SteamWorldFixture w(dir());
        w.options.steamRunning = true;
        w.options.steamVrRunning = true;
        w.install();
        QVERIFY(w.steamVrIsUp());
        QCOMPARE(w.pc.processes.modulePath(w.pc.processes.list()[2].pid),
                 QString(vrStartup).replace("vrstartup.exe", "vrserver.exe"));
        QCOMPARE(w.pc.events.lines(), QStringList());
    }

    void steamAppearsSomeTimeAfterItsLaunch()
    {
        SteamWorldFixture w(dir());
        w.options.steamAppears = 5000;
        w.install();
        QVERIFY(w.pc.launches.start({steamProgram, "-silent", true}).started);
        w.clock.advance(4999);
        QCOMPARE(w.running(), QStringList());
        QCOMPARE(w.pc.events.lines(), QStringList());
        w.clock.advance(1);
        QCOMPARE(w.running(), QStringList("steam.exe"));
        QCOMPARE(w.pc.processes.modulePath(w.pc.processes.list()[0].pid), steamProgram);
        QCOMPARE(w.pc.events.lines(), QStringList("Steam appears"));
    }

    void aSecondLaunchOfSteamBringsNoSecondSteam()
    {
        SteamWorldFixture w(dir());
        w.install();
        w.pc.launches.start({steamProgram, "-silent", true});
        w.clock.advance(1000);
        w.pc.launches.start({steamProgram, "-silent", true});
        w.clock.advance(60000);
        w.pc.launches.start({steamProgram, "-silent", true});
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList("steam.exe"));

        // But once it has ended, it comes again.
        w.pc.processes.endAll("steam.exe");
        w.pc.launches.start({steamProgram, "-silent", true});
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList("steam.exe"));
    }

    void theLaunchedProgramEndsOrNot_data()
    {
        QTest::addColumn<int>("ends");
        QTest::newRow("soon") << 1000;
        QTest::newRow("at once") << 0;
        QTest::newRow("never") << -1;
    }
    void theLaunchedProgramEndsOrNot()
    {
        SteamWorldFixture w(dir());
        QFETCH(int, ends);
        w.options.launcherEnds = ends;
        w.install();
        const SimLaunchResult result = w.pc.launches.start({steamProgram, "-silent", true});
        QVERIFY(result.started);
        QVERIFY(result.hasHandle);
        QCOMPARE(result.endsAfter, ends);
    }

    void aProgramInTheWrongFolderCannotBeLaunched_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<bool>("found");
        QTest::newRow("Steam") << steamProgram << true;
        QTest::newRow("Steam, other slashes") << QString(steamProgram).replace('\\', '/') << true;
        QTest::newRow("Steam, other letter case") << steamProgram.toUpper() << true;
        QTest::newRow("Steam elsewhere") << "D:\\Steam\\steam.exe" << false;
        QTest::newRow("SteamVR's tool") << vrStartup << true;
        QTest::newRow("SteamVR's tool elsewhere") << "C:\\bin\\win64\\vrstartup.exe" << false;
    }
    void aProgramInTheWrongFolderCannotBeLaunched()
    {
        SteamWorldFixture w(dir());
        QFETCH(QString, program);
        QFETCH(bool, found);
        w.install();
        const SimLaunchResult result = w.pc.launches.start({program, "-silent", true});
        QCOMPARE(result.started, found);
        QCOMPARE(result.error, found ? 0u : 3u);
        w.clock.advance(60000);
        QCOMPARE(w.running().isEmpty(), !found || program == vrStartup);
    }

    void nothingOfAllThatIsInTheJournalButTheLaunches()
    {
        SteamWorldFixture w(dir());
        w.installReady();
        w.openUrl();
        w.clock.advance(60000);
        w.shutDown();
        w.clock.advance(60000);
        QCOMPARE(w.running(), QStringList("steam.exe"));
        QCOMPARE(
            w.pc.journal.lines(),
            QStringList({"launch explorer " + url, "launch " + vrStartup + " -shutdown (hidden)"}));
    }
};

KOLM_TEST_MAIN(SteamWorldTest)
#include "tst_steam_world.moc"
