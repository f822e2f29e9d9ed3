#include "simpc/steam_world.h"

#include "base/manual_clock.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString steamProgram = QStringLiteral("C:\\Program Files (x86)\\Steam\\steam.exe");
const QString vrStartup = QStringLiteral(
    "C:\\Program Files (x86)\\Steam\\steamapps\\common\\SteamVR\\bin\\win64\\vrstartup.exe");
const QString url = QStringLiteral("steam://rungameid/250820");
const QStringList allOfSteamVr{"vrmonitor.exe", "vrserver.exe", "vrcompositor.exe",
                               "vrwebhelper.exe", "vrdashboard.exe"};

// One PC, its Steam and what became of the streaming server.
struct World
{
    explicit World(const QString &homeDir)
    {
        options.homeDir = homeDir;
        options.startServer = [this] { calls.append("start"); };
        options.stopServer = [this] { calls.append("stop"); };
    }

    // What happened to the streaming server up to now.
    QStringList server()
    {
        pc.timeline.settle();
        return calls;
    }
    void install() { installSteam(pc, options); }
    // Steam runs and a driver is registered.
    void installReady()
    {
        options.steamRunning = true;
        registerDrivers({"C:\\Assistant"});
        install();
    }
    void registerDrivers(const QStringList &folders)
    {
        const QJsonObject paths{{"external_drivers", QJsonArray::fromStringList(folders)}};
        writePaths(QJsonDocument(paths).toJson());
    }
    void writePaths(const QByteArray &text)
    {
        const QString folder = options.homeDir + "/AppData/Local/openvr";
        QVERIFY(QDir().mkpath(folder));
        QFile file(folder + "/openvrpaths.vrpath");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
    SimLaunchResult openUrl(const QString &which = url)
    {
        return pc.launches.start({"explorer", which, false});
    }
    SimLaunchResult shutDown() { return pc.launches.start({vrStartup, "-shutdown", true}); }
    QStringList running() const
    {
        QStringList names;
        for (const processes::Entry &process : pc.processes.list())
            names.append(process.name);
        return names;
    }
    bool steamVrIsUp() const { return running() == QStringList("steam.exe") + allOfSteamVr; }

    ManualClock clock;
    SimPc pc{clock};
    SteamOptions options;
    QStringList calls; // "start", "stop"
};

} // namespace

class SteamWorldTest : public TestCase
{
    Q_OBJECT

private slots:
    void theRegistrySaysWhereSteamAndSteamVrAre();
    void withoutSteamTheRegistryIsSilentAndNothingCanBeLaunched();
    void steamMayBeThereWithoutBeingListed();
    void whatRunsAtTheBeginningRuns();
    void steamAppearsSomeTimeAfterItsLaunch();
    void aSecondLaunchOfSteamBringsNoSecondSteam();
    void theLaunchedProgramEndsOrNot_data();
    void theLaunchedProgramEndsOrNot();
    void aProgramInTheWrongFolderCannotBeLaunched_data();
    void aProgramInTheWrongFolderCannotBeLaunched();
    void withoutSteamRunningTheUrlDoesNothing();
    void anotherUrlDoesNothing();
    void withoutSteamVrInstalledTheUrlDoesNothing();
    void steamVrComesUpProcessByProcess();
    void steamVrIsNotStartedTwice();
    void theDriverIsLoadedOnlyWhenRegisteredAsItsServerComesUp_data();
    void theDriverIsLoadedOnlyWhenRegisteredAsItsServerComesUp();
    void theDriversAreReadWhenTheServerComesUpAndNotBefore();
    void theCellIsSetByThisPcOnlyWhenAskedTo_data();
    void theCellIsSetByThisPcOnlyWhenAskedTo();
    void shutdownTakesSteamVrAwayProcessByProcess();
    void shutdownEndsAlsoTheTour();
    void shutdownOfNothingDoesNothing();
    void onlyTheShutdownParameterShutsDown();
    void aShutdownWhileSteamVrComesUpKeepsTheRestAway();
    void steamVrCannotBeStartedWhileItCloses();
    void startAndShutdownRepeat();
    void leftoverProcessesAreShutDownLikeOthers();
    void theStreamingServerGoesHoweverSteamVrsServerEnds();
    void aKilledSteamVrCanBeStartedAgain();
    void aShutdownThatOthersFinishedDoesNotTouchTheNextRun();
    void nothingOfAllThatIsInTheJournalButTheLaunches();
};

void SteamWorldTest::theRegistrySaysWhereSteamAndSteamVrAre()
{
    World w(dir());
    w.options.steamPath = "D:\\Games\\Steam";
    w.options.steamVrPath = "E:\\SteamVR";
    w.install();
    const QString uninstall = "Microsoft\\Windows\\CurrentVersion\\Uninstall";
    const QString listed = "HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\" + uninstall + "\\Steam";
    QCOMPARE(
        w.pc.registry.text("HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Valve\\Steam", "InstallPath")
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

void SteamWorldTest::withoutSteamTheRegistryIsSilentAndNothingCanBeLaunched()
{
    World w(dir());
    w.options.steamInstalled = false;
    w.options.steamVrInstalled = false;
    w.install();
    QVERIFY(!w.pc.registry.keyExists("HKEY_LOCAL_MACHINE"));
    QCOMPARE(w.pc.launches.start({steamProgram, "-silent", true}).error, 2u);
    QCOMPARE(w.shutDown().error, 2u);
}

void SteamWorldTest::steamMayBeThereWithoutBeingListed()
{
    World w(dir());
    w.options.steamListed = false;
    w.install();
    const QString node = "HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node";
    QVERIFY(w.pc.registry.keyExists(node + "\\Valve\\Steam"));
    QVERIFY(!w.pc.registry.keyExists(node + "\\Microsoft"));
}

void SteamWorldTest::whatRunsAtTheBeginningRuns()
{
    World w(dir());
    w.options.steamRunning = true;
    w.options.steamVrRunning = true;
    w.install();
    QVERIFY(w.steamVrIsUp());
    QCOMPARE(w.pc.processes.modulePath(w.pc.processes.list()[2].pid),
             QString(vrStartup).replace("vrstartup.exe", "vrserver.exe"));
    QCOMPARE(w.pc.events.lines(), QStringList());
}

void SteamWorldTest::steamAppearsSomeTimeAfterItsLaunch()
{
    World w(dir());
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

void SteamWorldTest::aSecondLaunchOfSteamBringsNoSecondSteam()
{
    World w(dir());
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

void SteamWorldTest::theLaunchedProgramEndsOrNot_data()
{
    QTest::addColumn<int>("ends");
    QTest::newRow("soon") << 1000;
    QTest::newRow("at once") << 0;
    QTest::newRow("never") << -1;
}

void SteamWorldTest::theLaunchedProgramEndsOrNot()
{
    World w(dir());
    QFETCH(int, ends);
    w.options.launcherEnds = ends;
    w.install();
    const SimLaunchResult result = w.pc.launches.start({steamProgram, "-silent", true});
    QVERIFY(result.started);
    QVERIFY(result.hasHandle);
    QCOMPARE(result.endsAfter, ends);
}

void SteamWorldTest::aProgramInTheWrongFolderCannotBeLaunched_data()
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

void SteamWorldTest::aProgramInTheWrongFolderCannotBeLaunched()
{
    World w(dir());
    QFETCH(QString, program);
    QFETCH(bool, found);
    w.install();
    const SimLaunchResult result = w.pc.launches.start({program, "-silent", true});
    QCOMPARE(result.started, found);
    QCOMPARE(result.error, found ? 0u : 3u);
    w.clock.advance(60000);
    QCOMPARE(w.running().isEmpty(), !found || program == vrStartup);
}

void SteamWorldTest::withoutSteamRunningTheUrlDoesNothing()
{
    World w(dir());
    w.registerDrivers({"C:\\Assistant"});
    w.install();
    QVERIFY(w.openUrl().started);
    w.clock.advance(60000);
    QCOMPARE(w.running(), QStringList());
    QCOMPARE(w.pc.events.lines(), QStringList());
}

void SteamWorldTest::anotherUrlDoesNothing()
{
    World w(dir());
    w.installReady();
    QVERIFY(w.openUrl("steam://rungameid/1").started);
    w.clock.advance(60000);
    QCOMPARE(w.running(), QStringList("steam.exe"));
}

void SteamWorldTest::withoutSteamVrInstalledTheUrlDoesNothing()
{
    World w(dir());
    w.options.steamVrInstalled = false;
    w.installReady();
    w.openUrl();
    w.clock.advance(60000);
    QCOMPARE(w.running(), QStringList("steam.exe"));
}

void SteamWorldTest::steamVrComesUpProcessByProcess()
{
    World w(dir());
    w.options.steamVrAppears = 3000;
    w.options.steamVrGap = 200;
    w.options.driverLoads = 500;
    w.installReady();
    w.openUrl();
    QCOMPARE(w.pc.events.lines(), QStringList("SteamVR starts"));
    w.clock.advance(2999);
    QCOMPARE(w.running(), QStringList("steam.exe"));
    w.clock.advance(1);
    QCOMPARE(w.running(), QStringList({"steam.exe", "vrmonitor.exe"}));
    w.clock.advance(200);
    QCOMPARE(w.running(), QStringList({"steam.exe", "vrmonitor.exe", "vrserver.exe"}));
    w.clock.advance(499);
    QCOMPARE(w.server(), QStringList());
    w.clock.advance(1);
    w.pc.timeline.settle();
    QCOMPARE(w.server(), QStringList("start"));
    w.clock.advance(100);
    QVERIFY(w.steamVrIsUp());
    QCOMPARE(w.pc.events.lines(), QStringList({"SteamVR starts", "streaming server starts",
                                               "the cell says 1", "SteamVR runs"}));
}

void SteamWorldTest::steamVrIsNotStartedTwice()
{
    World w(dir());
    w.installReady();
    w.openUrl();
    w.clock.advance(1000);
    w.openUrl();
    w.clock.advance(2300);
    w.openUrl();
    w.clock.advance(60000);
    w.openUrl();
    w.clock.advance(60000);
    QVERIFY(w.steamVrIsUp());
    QCOMPARE(w.server(), QStringList("start"));
}

void SteamWorldTest::theDriverIsLoadedOnlyWhenRegisteredAsItsServerComesUp_data()
{
    QTest::addColumn<QString>("wanted");
    QTest::addColumn<QByteArray>("paths");
    QTest::addColumn<bool>("loaded");
    const QByteArray none;
    QTest::newRow("any, one there")
        << "" << QByteArray(R"({"external_drivers":["C:\\x"]})") << true;
    QTest::newRow("any, none there") << "" << QByteArray(R"({"external_drivers":[]})") << false;
    QTest::newRow("any, null") << "" << QByteArray(R"({"external_drivers":null})") << false;
    QTest::newRow("any, member missing") << "" << QByteArray("{}") << false;
    QTest::newRow("any, no file") << "" << none << false;
    QTest::newRow("any, not JSON") << "" << QByteArray("{\"external_drivers\":[") << false;
    QTest::newRow("ours there") << "/opt/app" << QByteArray(R"({"external_drivers":["/opt/app"]})")
                                << true;
    QTest::newRow("ours among others")
        << "/opt/app" << QByteArray(R"({"external_drivers":["/x","/opt/app"]})") << true;
    QTest::newRow("ours with a slash at the end")
        << "/opt/app" << QByteArray(R"({"external_drivers":["/opt/app/"]})") << true;
    QTest::newRow("ours with backslashes")
        << "C:/app" << QByteArray(R"({"external_drivers":["C:\\app"]})") << true;
    QTest::newRow("another only") << "/opt/app" << QByteArray(R"({"external_drivers":["/opt"]})")
                                  << false;
}

void SteamWorldTest::theDriverIsLoadedOnlyWhenRegisteredAsItsServerComesUp()
{
    World w(dir());
    QFETCH(QString, wanted);
    QFETCH(QByteArray, paths);
    QFETCH(bool, loaded);
    w.options.steamRunning = true;
    w.options.driverFolder = wanted;
    if (!paths.isEmpty())
        w.writePaths(paths);
    w.install();
    w.openUrl();
    w.clock.advance(60000);
    QVERIFY(w.steamVrIsUp());
    QCOMPARE(w.server(), loaded ? QStringList("start") : QStringList());
    quint32 value = 0;
    QCOMPARE(w.pc.cell().read(&value), loaded);
    QCOMPARE(w.pc.events.lines().contains("SteamVR finds no streaming driver"), !loaded);
}

void SteamWorldTest::theDriversAreReadWhenTheServerComesUpAndNotBefore()
{
    World w(dir());
    w.options.steamVrAppears = 3000;
    w.options.steamVrGap = 200;
    w.installReady();
    w.openUrl();
    w.clock.advance(3199);
    w.pc.timeline.settle();
    w.registerDrivers({});
    w.clock.advance(60000);
    w.pc.timeline.settle();
    QCOMPARE(w.server(), QStringList());

    // And once they are read, it is of no use to take one away.
    w.shutDown();
    w.clock.advance(60000);
    w.pc.timeline.settle();
    w.registerDrivers({"C:\\Assistant"});
    w.openUrl();
    w.clock.advance(3200);
    w.pc.timeline.settle();
    w.registerDrivers({});
    w.clock.advance(60000);
    w.pc.timeline.settle();
    QCOMPARE(w.server(), QStringList("start"));
}

void SteamWorldTest::theCellIsSetByThisPcOnlyWhenAskedTo_data()
{
    QTest::addColumn<bool>("asked");
    QTest::newRow("asked") << true;
    QTest::newRow("the server does it") << false;
}

void SteamWorldTest::theCellIsSetByThisPcOnlyWhenAskedTo()
{
    World w(dir());
    QFETCH(bool, asked);
    w.options.setsCell = asked;
    w.installReady();
    w.pc.cell().write(0);
    w.openUrl();
    w.clock.advance(60000);
    quint32 value = 77;
    QVERIFY(w.pc.cell().read(&value));
    QCOMPARE(value, asked ? 1u : 0u);
}

void SteamWorldTest::shutdownTakesSteamVrAwayProcessByProcess()
{
    World w(dir());
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

void SteamWorldTest::shutdownEndsAlsoTheTour()
{
    World w(dir());
    w.installReady();
    w.openUrl();
    w.clock.advance(60000);
    w.pc.processes.start("steamtours.exe");
    w.shutDown();
    w.clock.advance(60000);
    QCOMPARE(w.running(), QStringList("steam.exe"));
}

void SteamWorldTest::shutdownOfNothingDoesNothing()
{
    World w(dir());
    w.installReady();
    QVERIFY(w.shutDown().started);
    w.clock.advance(60000);
    QCOMPARE(w.pc.events.lines(), QStringList());
    QCOMPARE(w.server(), QStringList());
    w.openUrl();
    w.clock.advance(60000);
    QVERIFY(w.steamVrIsUp());
}

void SteamWorldTest::onlyTheShutdownParameterShutsDown()
{
    World w(dir());
    w.installReady();
    w.openUrl();
    w.clock.advance(60000);
    w.pc.launches.start({vrStartup, "", true});
    w.pc.launches.start({vrStartup, "-Shutdown", true});
    w.clock.advance(60000);
    QVERIFY(w.steamVrIsUp());
}

void SteamWorldTest::aShutdownWhileSteamVrComesUpKeepsTheRestAway()
{
    World w(dir());
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

void SteamWorldTest::steamVrCannotBeStartedWhileItCloses()
{
    World w(dir());
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

void SteamWorldTest::startAndShutdownRepeat()
{
    World w(dir());
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

void SteamWorldTest::leftoverProcessesAreShutDownLikeOthers()
{
    World w(dir());
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

void SteamWorldTest::theStreamingServerGoesHoweverSteamVrsServerEnds()
{
    World w(dir());
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

void SteamWorldTest::aKilledSteamVrCanBeStartedAgain()
{
    World w(dir());
    w.installReady();
    w.openUrl();
    w.clock.advance(60000);
    w.pc.timeline.settle();
    for (const QString &name : allOfSteamVr)
        w.pc.processes.endAll(name);
    w.openUrl();
    w.clock.advance(60000);
    QVERIFY(w.steamVrIsUp());
    QCOMPARE(w.server(), QStringList({"start", "stop", "start"}));

    // Killed before the driver was loaded: then it is not loaded.
    w.pc.processes.endAll("vrserver.exe");
    w.shutDown();
    w.clock.advance(60000);
    w.openUrl();
    w.clock.advance(3300);
    QVERIFY(w.pc.processes.isRunning("vrserver.exe"));
    w.pc.processes.endAll("vrserver.exe");
    w.clock.advance(60000);
    w.pc.timeline.settle();
    QCOMPARE(w.server(), QStringList({"start", "stop", "start", "stop"}));
}

void SteamWorldTest::aShutdownThatOthersFinishedDoesNotTouchTheNextRun()
{
    World w(dir());
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

void SteamWorldTest::nothingOfAllThatIsInTheJournalButTheLaunches()
{
    World w(dir());
    w.installReady();
    w.openUrl();
    w.clock.advance(60000);
    w.shutDown();
    w.clock.advance(60000);
    QCOMPARE(w.running(), QStringList("steam.exe"));
    QCOMPARE(w.pc.journal.lines(), QStringList({"launch explorer " + url,
                                                "launch " + vrStartup + " -shutdown (hidden)"}));
}

KOLM_TEST_MAIN(SteamWorldTest)
#include "tst_steam_world.moc"
