#include "simpc/scenario.h"

#include "base/manual_clock.h"
#include "pc/network_profile.h"
#include "simpc/sim_pc.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// A scenario with a title and these further members.
Scenario parsed(const QByteArray &members, QString *error)
{
    return scenario::parse("{\"title\":\"t\"" + QByteArray(members.isEmpty() ? "" : ",") + members +
                               '}',
                           "test", error);
}

Scenario parsed(const QByteArray &members)
{
    QString error;
    const Scenario scenario = parsed(members, &error);
    if (!error.isEmpty())
        qFatal("%s", qPrintable(error));
    return scenario;
}

const ScenarioFile &fileOf(const Scenario &scenario, const QString &name)
{
    for (const ScenarioFile &file : scenario.files) {
        if (file.path.endsWith(name))
            return file;
    }
    qFatal("no file %s", qPrintable(name));
}

// What the system's query for the network prints.
QString networkAnswer()
{
    return network_profile::query().arguments.value(1);
}

} // namespace

class ScenarioTest : public TestCase
{
    Q_OBJECT

private slots:
    void everyCompiledInScenarioLoads_data();
    void everyCompiledInScenarioLoads();
    void theCompiledInScenariosAreThoseOfTheFolderAndDiffer();
    void aNameIsFoundWithAndWithoutItsEnding_data();
    void aNameIsFoundWithAndWithoutItsEnding();
    void aFileIsFoundByItsPath();
    void whatIsNotThereIsAnErrorThatNamesTheChoice();
    void anErrorInAFileNamesTheScenario();
    void mistakesAreToldPlainly_data();
    void mistakesAreToldPlainly();
    void theFirstMistakeIsTold();
    void leftOutKeysHaveTheirDefaults();
    void everyKeyOfThePcArrives();
    void everyKeyOfTheHardwareArrives();
    void whatDirect3DAnswersIsAWord_data();
    void whatDirect3DAnswersIsAWord();
    void everyPowerLineWordHasItsStatus_data();
    void everyPowerLineWordHasItsStatus();
    void everyKeyOfSteamAndSteamVrArrives();
    void theServerMayBeAWord_data();
    void theServerMayBeAWord();
    void everyKeyOfTheServerArrives();
    void theCommandLineSaysAllThatDiffersFromTheDefault();
    void aLaterStartHearsOnlyOfWhatIsStillToCome_data();
    void aLaterStartHearsOnlyOfWhatIsStillToCome();
    void aBuiltPcIsAsDescribed();
    void theTimelineChangesThePcAndTellsSo();
    void theCableAndAdbAreAsDescribed();
    void filesMayBeObjectsTextsOrAbsent();
    void theDefaultFilesHoldAModeADriverAndALongNumber();
    void longNumbersOfAScenarioReachTheFileUnchanged();
};

void ScenarioTest::everyCompiledInScenarioLoads_data()
{
    QTest::addColumn<QString>("name");
    for (const QString &name : scenario::names())
        QTest::newRow(qPrintable(name)) << name;
}

void ScenarioTest::everyCompiledInScenarioLoads()
{
    QFETCH(QString, name);
    QString error = "untouched";
    const Scenario scenario = scenario::load(name, &error);
    QCOMPARE(error, QString());
    QCOMPARE(scenario.name, name);
    QVERIFY(!scenario.title.isEmpty());
    QVERIFY(!scenario.title.contains('\n'));
    // It can be built, and lives for an hour.
    ManualClock clock;
    SimPc pc(clock);
    scenario::build(scenario, pc);
    clock.advance(3600 * 1000);
    pc.timeline.settle();
    QVERIFY(!pc.timeline.nextChange());
}

void ScenarioTest::theCompiledInScenariosAreThoseOfTheFolderAndDiffer()
{
    QStringList files;
    for (const QFileInfo &file : QDir(SCENARIO_FOLDER).entryInfoList(QDir::Files, QDir::Name))
        files.append(file.completeBaseName());
    QVERIFY(!files.isEmpty());
    QCOMPARE(scenario::names(), files);
    QString error;
    const auto load = [&error](const char *name) { return scenario::load(name, &error); };
    QCOMPARE(load("one-headset").server.headsets.size(), size_t(1));
    QCOMPARE(load("two-headsets").server.headsets.size(), size_t(2));
    const PlannedHeadset drops = load("headset-drops-and-returns").server.headsets.at(0);
    QVERIFY(drops.drops > 0 && drops.returns > drops.drops);
    QVERIFY(load("steamvr-restart").server.restart > 0);
    QVERIFY(!load("no-steam").steam.steamInstalled);
    QVERIFY(!load("no-steam").steam.steamVrInstalled);
    {
        ManualClock clock;
        SimPc pc(clock);
        scenario::build(load("on-battery"), pc);
        QCOMPARE(pc.facts.acLine.get(), answers::AcLine(power::AcLine::Offline));
        clock.advance(load("on-battery").timeline.at(0).at);
        QCOMPARE(pc.facts.acLine.get(), answers::AcLine(power::AcLine::Online));
    }
    {
        ManualClock clock;
        SimPc pc(clock);
        scenario::build(load("public-network"), pc);
        QVERIFY(pc.facts.network.get().contains("Public"));
    }
    QCOMPARE(load("slow-steam").steam.steamAppears, 20000);
    QCOMPARE(load("slow-steam").steam.launcherEnds, -1);
    QCOMPARE(load("server-never-comes").server.kind, ServerPlan::Never);
    QCOMPARE(load("external-server").server.kind, ServerPlan::External);
    QCOMPARE(load("one-headset").cloud, QString("normal"));
    QCOMPARE(load("no-cloud").cloud, QString("absent"));
    QCOMPARE(load("silent-cloud").cloud, QString("silent"));
    QCOMPARE(load("update-offered").cloud, QString("newer"));
    QCOMPARE(load("update-mandatory").cloud, QString("newer-forced"));
    QVERIFY(load("steam-already-running").steam.steamRunning);
    QVERIFY(!load("steam-already-running").steam.steamVrRunning);
    QVERIFY(load("leftover-steamvr").steam.steamVrRunning);
    QVERIFY(!fileOf(load("first-run"), "set.json").exists);
    QVERIFY(fileOf(load("one-headset"), "set.json").exists);
    QCOMPARE(error, QString());
}

void ScenarioTest::aNameIsFoundWithAndWithoutItsEnding_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("without") << "no-steam";
    QTest::newRow("with") << "no-steam.json";
}

void ScenarioTest::aNameIsFoundWithAndWithoutItsEnding()
{
    QFETCH(QString, name);
    QString error;
    const Scenario scenario = scenario::load(name, &error);
    QCOMPARE(error, QString());
    QCOMPARE(scenario.name, QString("no-steam"));
    QVERIFY(!scenario.steam.steamInstalled);
}

void ScenarioTest::aFileIsFoundByItsPath()
{
    writeFile("mine.json", R"({"title":"my own","steam":{"running":true}})");
    for (const QString &file : {QString("./mine.json"), path("mine.json"), QString("mine.json")}) {
        QString error;
        const Scenario scenario = scenario::load(file, &error);
        QCOMPARE(error, QString());
        QCOMPARE(scenario.name, QString("mine"));
        QCOMPARE(scenario.title, QString("my own"));
        QVERIFY(scenario.steam.steamRunning);
    }
}

void ScenarioTest::whatIsNotThereIsAnErrorThatNamesTheChoice()
{
    QString error;
    scenario::load("no-such-thing", &error);
    QCOMPARE(error, "no scenario \"no-such-thing\", neither a file (No such file or directory) nor "
                    "one of: " +
                        scenario::names().join(", "));
}

void ScenarioTest::anErrorInAFileNamesTheScenario()
{
    writeFile("mine.json", R"({"title":"t","steem":{}})");
    QString error;
    scenario::load("mine.json", &error);
    QCOMPARE(error, QString("scenario mine.json: \"steem\" is not a key of a scenario"));
}

void ScenarioTest::mistakesAreToldPlainly_data()
{
    QTest::addColumn<QByteArray>("members");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *members, const char *expected) {
        QTest::newRow(name) << QByteArray(members) << QString(expected);
    };
    row("unknown key", R"("steem":{})", R"("steem" is not a key of a scenario)");
    row("unknown inner key", R"("steam":{"runing":true})",
        R"("steam.runing" is not a key of a scenario)");
    row("ports that are none", R"("pc":{"start":[{"name":"x","ports":[0]}]})",
        R"("pc.start[0].ports" must be a list of whole numbers from 1 to 65535)");
    row("ports beyond the last", R"("pc":{"start":[{"name":"x","ports":[80,65536]}]})",
        R"("pc.start[0].ports" must be a list of whole numbers from 1 to 65535)");
    row("one port", R"("pc":{"start":[{"name":"x","ports":80}]})",
        R"("pc.start[0].ports" must be a list of whole numbers from 1 to 65535)");
    row("unknown vendor", R"("pc":{"adapters":[{"vendor":"acme","name":"x"}]})",
        R"("pc.adapters[0].vendor" must be one of "nvidia", "amd", "intel", "microsoft")");
    row("nameless adapter", R"("pc":{"adapters":[{}]})", R"("pc.adapters[0].name" is missing)");
    row("no version", R"("pc":{"displayDrivers":[{}]})",
        R"("pc.displayDrivers[0].version" must be four numbers up to 65535, like "31.0.15.5176")");
    row("a number too large", R"("pc":{"displayDrivers":[{"version":"1.2.3.65536"}]})",
        R"("pc.displayDrivers[0].version" must be four numbers up to 65535, like "31.0.15.5176")");
    row("unknown key of an adapter", R"("pc":{"adapters":[{"name":"x","vram":1}]})",
        R"("pc.adapters[0].vram" is not a key of a scenario)");
    row("a command without a text", R"("pc":{"commands":{"netsh":1}})",
        R"("pc.commands.netsh" must be a text)");
    row("unknown key in a list", R"("at":[{"seconds":1},{"seconds":2,"ac":"offline"}])",
        R"("at[1].ac" is not a key of a scenario)");
    row("the beginning's key in the timeline", R"("at":[{"seconds":1,"os":"x"}])",
        R"("at[0].os" is not a key of a scenario)");
    row("unknown file", R"("files":{"other.json":{}})",
        R"("files.other.json" is not a key of a scenario)");
    row("no object", R"("steam":true)", R"("steam" must be an object)");
    row("no list", R"("at":{"seconds":1})", R"("at" must be a list of objects)");
    row("list of others", R"("at":[1])", R"("at" must be a list of objects)");
    row("no flag", R"("steam":{"running":1})", R"("steam.running" must be true or false)");
    row("no text", R"("pc":{"os":10})", R"("pc.os" must be a text)");
    row("no cloud", R"("cloud":null)", R"("cloud" must be a text)");
    row("no texts", R"("pc":{"recordingDevices":[1]})",
        R"("pc.recordingDevices" must be a text or a list of texts)");
    row("no time", R"("steam":{"appearsAfter":"soon"})",
        R"("steam.appearsAfter" must be a number of seconds from 0 up to a week)");
    row("negative time", R"("steam":{"appearsAfter":-1})",
        R"("steam.appearsAfter" must be a number of seconds from 0 up to a week)");
    row("endless time", R"("steamVR":{"closesAfter":604801})",
        R"("steamVR.closesAfter" must be a number of seconds from 0 up to a week)");
    row("never, where there is no never", R"("steam":{"appearsAfter":"never"})",
        R"("steam.appearsAfter" must be a number of seconds from 0 up to a week)");
    row("power line", R"("pc":{"acLine":"on"})",
        R"("pc.acLine" must be one of "online", "offline", "unknown", "fails")");
    row("power line as a number", R"("pc":{"acLine":1})",
        R"("pc.acLine" must be one of "online", "offline", "unknown", "fails")");
    row("memory in halves", R"("pc":{"memoryBytes":1.5})",
        R"("pc.memoryBytes" must be a whole number from 0 up)");
    row("negative memory", R"("pc":{"memoryBytes":-1})",
        R"("pc.memoryBytes" must be a whole number from 0 up)");
    row("registry value", R"("pc":{"registry":{"HKEY_X\\Y":{"n":1}}})",
        R"("pc.registry.HKEY_X\Y.n" must be a text)");
    row("process without name", R"("pc":{"start":[{"path":"x"}]})",
        R"("pc.start[0].name" is missing)");
    row("moment without time", R"("at":[{"acLine":"offline"}])", R"("at[0].seconds" is missing)");
    row("Steam runs uninstalled", R"("steam":{"installed":false,"running":true})",
        R"("steam.running" needs Steam to be installed)");
    row("SteamVR runs uninstalled", R"("steamVR":{"installed":false,"running":true})",
        R"("steamVR.running" needs SteamVR to be installed)");
    row("server word", R"("streamingServer":"none")",
        R"("streamingServer" must be one of "sim", "external", "never")");
    row("server number", R"("streamingServer":1)",
        R"("streamingServer" must be one of "sim", "external", "never")");
    row("headset without serial", R"("streamingServer":{"headsets":[{"address":"1"}]})",
        R"("streamingServer.headsets[0].serial" is missing)");
    row("headset without address", R"("streamingServer":{"headsets":[{"serial":"1"}]})",
        R"("streamingServer.headsets[0].address" is missing)");
    row("gone before it came",
        R"("streamingServer":{"headsets":[{"serial":"1","address":"1","joinsAt":5,"dropsAt":5}]})",
        R"("streamingServer.headsets[0].dropsAt" must be later than "joinsAt")");
    row("back before it went",
        R"("streamingServer":{"headsets":[{"serial":"1","address":"1","dropsAt":5,"returnsAt":5}]})",
        R"("streamingServer.headsets[0].returnsAt" must be later than a "dropsAt")");
    row("back without going",
        R"("streamingServer":{"headsets":[{"serial":"1","address":"1","returnsAt":5}]})",
        R"("streamingServer.headsets[0].returnsAt" must be later than a "dropsAt")");
    row("no pieces", R"("streamingServer":{"split":0})",
        R"("streamingServer.split" must be a whole number from 1 up)");
    row("headset on the cable without serial", R"("pc":{"usb":[{"state":"offline"}]})",
        R"("pc.usb[0].serial" is missing)");
    row("cable of numbers", R"("pc":{"usb":[1]})", R"("pc.usb" must be a text or a list of texts)");
    row("adb word", R"("adb":"genuine")", R"("adb" must be one of "sim", "none")");
    row("adb's flag", R"("adb":{"hangs":"yes"})", R"("adb.hangs" must be true or false)");
    row("strange choice", R"("at":[{"seconds":1,"personChooses":"bluetooth"}])",
        R"("at[0].personChooses" must be one of "usb", "wifi")");
    row("choice at the beginning", R"("pc":{"personChooses":"usb"})",
        R"("pc.personChooses" is not a key of a scenario)");
    row("file of a strange kind", R"("files":{"set.json":[1]})",
        R"("files.set.json" must be an object, a text or null)");
}

void ScenarioTest::mistakesAreToldPlainly()
{
    QFETCH(QByteArray, members);
    QFETCH(QString, expected);
    QString error;
    parsed(members, &error);
    QCOMPARE(error, expected);
}

void ScenarioTest::theFirstMistakeIsTold()
{
    QString error;
    scenario::parse("{\"title\":", "x", &error);
    QVERIFY2(error.startsWith("not JSON at byte "), qPrintable(error));
    scenario::parse("[]", "x", &error);
    QCOMPARE(error, QString("a scenario is a JSON object"));
    scenario::parse("{}", "x", &error);
    QCOMPARE(error, QString("\"title\" is missing"));
    scenario::parse(R"({"title":5,"pc":7})", "x", &error);
    QCOMPARE(error, QString("\"title\" must be a text"));
    scenario::parse(R"({"title":"t"})", "x", &error);
    QCOMPARE(error, QString());
}

void ScenarioTest::leftOutKeysHaveTheirDefaults()
{
    const Scenario scenario = parsed("");
    const SteamOptions steam;
    QCOMPARE(scenario.steam.steamInstalled, true);
    QCOMPARE(scenario.steam.steamRunning, false);
    QCOMPARE(scenario.steam.steamVrRunning, false);
    QCOMPARE(scenario.steam.steamAppears, steam.steamAppears);
    QCOMPARE(scenario.steam.setsCell, false);
    QCOMPARE(scenario.server.kind, ServerPlan::Program);
    QCOMPARE(scenario.server.headsets.size(), size_t(1));
    QCOMPARE(scenario.server.headsets[0].serial, QString("D3SIM00001"));
    QCOMPARE(scenario.server.headsets[0].address, QString("192.168.1.31"));
    QCOMPARE(scenario.server.restart, -1);
    QVERIFY(scenario.timeline.empty());

    ManualClock clock;
    SimPc pc(clock);
    scenario::build(scenario, pc);
    QCOMPARE(pc.facts.acLine.get(), answers::AcLine(power::AcLine::Online));
    QCOMPARE(pc.facts.memoryBytes.get(), quint64(17179869183));
    QCOMPARE(networkAnswer(), QString("NetworkCategory  : Private"));
    QCOMPARE(pc.facts.waveOuts.get().size(), size_t(1));
    QCOMPARE(pc.facts.waveOuts.get()[0].channels, 2);
    QVERIFY(pc.processes.list().empty());
}

void ScenarioTest::everyKeyOfThePcArrives()
{
    const Scenario scenario = parsed(R"x("pc":{
        "os":"Windows 11 Home", "cpu":"Some CPU", "machineGuid":"1-2", "memoryBytes":8589934592,
        "acLine":"unknown", "network":["Private","Public"],
        "recordingDevices":["Mic","CABLE Output (VB-Audio Virtual Cable)"],
        "waveOuts":[{"name":"TV","channels":6},{"name":"Phones"}],
        "registry":{"HKEY_CURRENT_USER\\Software\\X":{"a":"1","":"default"}},
        "start":[{"name":"adb.exe","path":"C:\\adb.exe"},{"name":"x.exe"}]})x");
    ManualClock clock;
    SimPc pc(clock);
    scenario::build(scenario, pc);
    const QString software = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\";
    const QString processor =
        "HKEY_LOCAL_MACHINE\\HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0";
    QCOMPARE(pc.registry.text(software + "Windows NT\\CurrentVersion", "ProductName").value_or("-"),
             QString("Windows 11 Home"));
    QCOMPARE(pc.registry.text(software + "Cryptography", "MachineGuid").value_or("-"),
             QString("1-2"));
    QCOMPARE(pc.registry.text(processor, "ProcessorNameString").value_or("-"), QString("Some CPU"));
    QCOMPARE(pc.registry.text("HKEY_CURRENT_USER\\Software\\X", "a").value_or("-"), QString("1"));
    QCOMPARE(pc.registry.text("HKEY_CURRENT_USER\\Software\\X", "").value_or("-"),
             QString("default"));
    QCOMPARE(pc.facts.memoryBytes.get(), quint64(8589934592));
    QCOMPARE(pc.facts.acLine.get(), answers::AcLine(power::AcLine::Unknown));
    QCOMPARE(networkAnswer(), QString("NetworkCategory  : Private\nNetworkCategory  : Public"));
    QCOMPARE(pc.facts.recordingDevices.get(),
             QStringList({"Mic", "CABLE Output (VB-Audio Virtual Cable)"}));
    QCOMPARE(pc.facts.waveOuts.get().size(), size_t(2));
    QCOMPARE(pc.facts.waveOuts.get()[0].name, QString("TV"));
    QCOMPARE(pc.facts.waveOuts.get()[0].channels, 6);
    QCOMPARE(pc.facts.waveOuts.get()[1].channels, 2);
    QCOMPARE(pc.processes.list().size(), size_t(2));
    QCOMPARE(pc.processes.list()[0].name, QString("adb.exe"));
    QCOMPARE(pc.processes.modulePath(pc.processes.list()[0].pid), QString("C:\\adb.exe"));
    // How it was from the beginning is no news.
    QCOMPARE(pc.events.lines(), QStringList());
}

void ScenarioTest::everyKeyOfTheHardwareArrives()
{
    const Scenario scenario = parsed(R"x("pc":{
        "osVersion":"8.1", "networkQuery":"hangs", "direct3D":"10.1",
        "adapters":[{"vendor":"amd","device":29695,"name":"RX","memoryBytes":8573157376},
                    {"vendor":"microsoft","device":140,"name":"Basic"}],
        "displayDrivers":[{"version":"31.0.15.5176"},{"manufacturer":"AMD","version":"1.2.3.4"}],
        "commands":{"netsh":"it's 100%s\n"},
        "start":[{"name":"a.exe","ports":[9943,80]},{"name":"b.exe"}]})x");
    ManualClock clock;
    SimPc pc(clock);
    scenario::build(scenario, pc);
    QCOMPARE(pc.facts.osVersion.get(), QString("8.1"));
    QCOMPARE(pc.facts.networkQuery.get(), SimNetworkQuery::Hangs);
    const answers::Adapters adapters = pc.facts.adapters.get();
    QCOMPARE(adapters.size(), size_t(2));
    QCOMPARE(adapters[0].vendorId, 0x1002U);
    QCOMPARE(adapters[0].deviceId, 29695U);
    QCOMPARE(adapters[0].name, QString("RX"));
    QCOMPARE(adapters[0].dedicatedMemory, quint64(8573157376));
    QCOMPARE(adapters[1].vendorId, 0x1414U);
    QCOMPARE(pc.facts.direct3D.get().level, 0xa100U);
    QCOMPARE(pc.facts.direct3D.get().result, 0U);
    const answers::DisplayDevices devices = pc.facts.displayDevices.get();
    QCOMPARE(devices.value().size(), size_t(1));
    QVERIFY(devices.value()[0].listed);
    const std::vector<display_drivers::Driver> drivers = devices.value()[0].drivers;
    QCOMPARE(drivers.size(), size_t(2));
    QCOMPARE(drivers[0].manufacturer, QString("NVIDIA"));
    QCOMPARE(drivers[0].version, quint64(0x001f'0000'000f'1438));
    QCOMPARE(drivers[1].manufacturer, QString("AMD"));
    QCOMPARE(drivers[1].version, quint64(0x0001'0002'0003'0004));
    QCOMPARE(pc.facts.commands.get(),
             SimCommands({{"netsh", QByteArray("printf %s 'it'\\''s 100%s\n'")}}));
    QCOMPARE(pc.ports.rows().size(), size_t(2));
    QCOMPARE(pc.ports.rows()[0].localPort, quint16(9943));
    QCOMPARE(pc.ports.rows()[1].localPort, quint16(80));
    QCOMPARE(pc.ports.rows()[1].pid, pc.processes.list()[0].pid);
}

void ScenarioTest::whatDirect3DAnswersIsAWord_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<quint32>("result");
    QTest::addColumn<quint32>("level");
    QTest::newRow("11.0") << QByteArray("11.0") << 0U << 0xb000U;
    QTest::newRow("10.0") << QByteArray("10.0") << 0U << 0xa000U;
    QTest::newRow("9.3") << QByteArray("9.3") << 0U << 0x9300U;
    QTest::newRow("9.1") << QByteArray("9.1") << 0U << 0x9100U;
    QTest::newRow("too old") << QByteArray("level 11 unknown") << 0x80070057U << 0U;
    QTest::newRow("fails") << QByteArray("fails") << 0x887a0004U << 0U;
}

void ScenarioTest::whatDirect3DAnswersIsAWord()
{
    QFETCH(QByteArray, word);
    ManualClock clock;
    SimPc pc(clock);
    scenario::build(parsed("\"pc\":{\"direct3D\":\"" + word + "\"}"), pc);
    QTEST(pc.facts.direct3D.get().result, "result");
    QTEST(pc.facts.direct3D.get().level, "level");
}

void ScenarioTest::everyPowerLineWordHasItsStatus_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<int>("status");
    QTest::newRow("online") << QByteArray("online") << 1;
    QTest::newRow("offline") << QByteArray("offline") << 0;
    QTest::newRow("unknown") << QByteArray("unknown") << 255;
    QTest::newRow("fails") << QByteArray("fails") << -1;
}

void ScenarioTest::everyPowerLineWordHasItsStatus()
{
    QFETCH(QByteArray, word);
    QFETCH(int, status);
    ManualClock clock;
    SimPc pc(clock);
    scenario::build(parsed("\"pc\":{\"acLine\":\"" + word + "\"}"), pc);
    const answers::AcLine line = pc.facts.acLine.get();
    QCOMPARE(line ? static_cast<int>(*line) : -1, status);
}

void ScenarioTest::everyKeyOfSteamAndSteamVrArrives()
{
    const SteamOptions o = parsed(R"(
        "steam":{"installed":true,"running":true,"path":"D:\\S","listed":false,
                 "appearsAfter":1.5,"launcherEndsAfter":2},
        "steamVR":{"installed":true,"running":true,"path":"D:\\V","appearsAfter":3,
                   "processGap":0.004,"driverLoadsAfter":5,"closesAfter":6,"closingGap":7})")
                               .steam;
    QCOMPARE(o.steamRunning, true);
    QCOMPARE(o.steamPath, QString("D:\\S"));
    QCOMPARE(o.steamListed, false);
    QCOMPARE(o.steamAppears, 1500);
    QCOMPARE(o.launcherEnds, 2000);
    QCOMPARE(o.steamVrRunning, true);
    QCOMPARE(o.steamVrPath, QString("D:\\V"));
    QCOMPARE(o.steamVrAppears, 3000);
    QCOMPARE(o.steamVrGap, 4);
    QCOMPARE(o.driverLoads, 5000);
    QCOMPARE(o.steamVrCloses, 6000);
    QCOMPARE(o.closingGap, 7000);
    const SteamOptions none = parsed(R"("steam":{"installed":false,"launcherEndsAfter":"never"},
                                        "steamVR":{"installed":false})")
                                  .steam;
    QCOMPARE(none.steamInstalled, false);
    QCOMPARE(none.steamVrInstalled, false);
    QCOMPARE(none.launcherEnds, -1);
}

void ScenarioTest::theServerMayBeAWord_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("pcSetsCell");
    QTest::newRow("sim") << QByteArray("sim") << int(ServerPlan::Program) << false;
    QTest::newRow("external") << QByteArray("external") << int(ServerPlan::External) << true;
    QTest::newRow("never") << QByteArray("never") << int(ServerPlan::Never) << false;
}

void ScenarioTest::theServerMayBeAWord()
{
    QFETCH(QByteArray, word);
    QFETCH(int, kind);
    QFETCH(bool, pcSetsCell);
    const Scenario scenario = parsed("\"streamingServer\":\"" + word + '"');
    QCOMPARE(int(scenario.server.kind), kind);
    QCOMPARE(scenario.steam.setsCell, pcSetsCell);
}

void ScenarioTest::everyKeyOfTheServerArrives()
{
    const ServerPlan plan = parsed(R"("streamingServer":{
        "headsets":[{"serial":"D3A","address":"10.0.0.1","joinsAt":1,"dropsAt":2,"returnsAt":3}],
        "linkDelay":0.25,"restartAt":30,"usb":true,"hello":true,"serialFirst":true,
        "deviceId":"D9","split":3,"join":2})")
                                .server;
    QCOMPARE(plan.kind, ServerPlan::Program);
    QCOMPARE(plan.headsets.size(), size_t(1));
    QCOMPARE(plan.arguments(0),
             QStringList({"--headset", "D3A=10.0.0.1@1", "--drop", "D3A@2", "--return", "D3A@3",
                          "--link-delay", "0.25", "--restart-at", "30", "--usb", "--hello",
                          "--serial-first", "--device-id", "D9", "--split", "3", "--join", "2"}));
    QVERIFY(parsed(R"("streamingServer":{"headsets":[]})").server.headsets.empty());
}

void ScenarioTest::theCommandLineSaysAllThatDiffersFromTheDefault()
{
    QCOMPARE(parsed("").server.arguments(0),
             QStringList({"--headset", "D3SIM00001=192.168.1.31@0", "--link-delay", "0.5"}));
}

void ScenarioTest::aLaterStartHearsOnlyOfWhatIsStillToCome_data()
{
    QTest::addColumn<int>("elapsed");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("first start") << 0 << QStringList{"--headset", "A=1@5", "--drop",       "A@20",
                                                     "--return",  "A@30",  "--headset",    "B=2@0",
                                                     "--drop",    "B@25",  "--restart-at", "10"};
    QTest::newRow("before the headset joins")
        << 4000 << QStringList{"--headset", "A=1@1", "--drop", "A@16", "--return",     "A@26",
                               "--headset", "B=2@0", "--drop", "B@21", "--restart-at", "6"};
    QTest::newRow("after the restart")
        << 10001 << QStringList{"--headset", "A=1@0",     "--drop", "A@9.999", "--return",
                                "A@19.999",  "--headset", "B=2@0",  "--drop",  "B@14.999"};
    QTest::newRow("as one drops") << 20000 << QStringList{"--headset", "A=1@10", "--headset",
                                                          "B=2@0",     "--drop", "B@5"};
    QTest::newRow("while one is away")
        << 21000 << QStringList{"--headset", "A=1@9", "--headset", "B=2@0", "--drop", "B@4"};
    QTest::newRow("after all") << 31000 << QStringList{"--headset", "A=1@0"};
}

void ScenarioTest::aLaterStartHearsOnlyOfWhatIsStillToCome()
{
    QFETCH(int, elapsed);
    QFETCH(QStringList, arguments);
    ServerPlan plan;
    plan.headsets = {{"A", "1", 5000, 20000, 30000}, {"B", "2", 0, 25000, -1}};
    plan.restart = 10000;
    plan.linkDelay = 500;
    QStringList actual = plan.arguments(elapsed);
    const int delay = actual.indexOf("--link-delay");
    QVERIFY(delay >= 0);
    actual.removeAt(delay + 1);
    actual.removeAt(delay);
    QCOMPARE(actual, arguments);
}

void ScenarioTest::aBuiltPcIsAsDescribed()
{
    ManualClock clock;
    SimPc pc(clock);
    scenario::build(parsed(R"("steam":{"running":true,"path":"D:\\S"})"), pc);
    QCOMPARE(
        pc.registry.text("HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Valve\\Steam", "InstallPath")
            .value_or("-"),
        QString("D:\\S"));
    QVERIFY(pc.processes.isRunning("steam.exe"));
    QVERIFY(pc.launches.start({"explorer", "steam://rungameid/250820", false}).started);
    clock.advance(60000);
    QVERIFY(pc.processes.isRunning("vrserver.exe"));
}

void ScenarioTest::theTimelineChangesThePcAndTellsSo()
{
    ManualClock clock;
    SimPc pc(clock);
    scenario::build(parsed(R"("at":[
        {"seconds":30,"recordingDevices":[],"waveOuts":[],"start":[{"name":"b.exe"}]},
        {"seconds":20,"acLine":"offline","network":"Public","waveOuts":[{"name":"TV","channels":6}],
         "start":[{"name":"a.exe"}]},
        {"seconds":40.5,"end":["a.exe","steam.exe"],"acLine":"fails","recordingDevices":"Mic"}])"),
                    pc);
    clock.advance(19999);
    QCOMPARE(pc.facts.acLine.get(), answers::AcLine(power::AcLine::Online));
    QCOMPARE(pc.events.lines(), QStringList());
    clock.advance(1);
    QCOMPARE(pc.facts.acLine.get(), answers::AcLine(power::AcLine::Offline));
    QCOMPARE(networkAnswer(), QString("NetworkCategory  : Public"));
    QCOMPARE(pc.facts.waveOuts.get()[0].channels, 6);
    QVERIFY(pc.processes.isRunning("a.exe"));
    QVERIFY(!pc.processes.isRunning("b.exe"));
    clock.advance(10000);
    QVERIFY(pc.facts.waveOuts.get().empty());
    QVERIFY(pc.processes.isRunning("b.exe"));
    clock.advance(10499);
    QVERIFY(pc.processes.isRunning("a.exe"));
    clock.advance(1);
    QVERIFY(!pc.processes.isRunning("a.exe"));
    QVERIFY(!pc.facts.acLine.get());
    QCOMPARE(pc.facts.recordingDevices.get(), QStringList({"Mic"}));
    QCOMPARE(pc.events.lines(),
             QStringList(
                 {"power line: offline", "network: Public", "sound outputs: TV (6 channels)",
                  "a.exe starts", "recording devices: none", "sound outputs: none", "b.exe starts",
                  "power line: fails", "recording devices: Mic", "a.exe ends", "steam.exe ends"}));
    QCOMPARE(pc.journal.lines(), QStringList());
}

void ScenarioTest::theCableAndAdbAreAsDescribed()
{
    const Scenario scenario = parsed(R"("pc":{"usb":[{"serial":"A","state":"offline"}]},
        "adb":{"onPath":false,"hangs":true,"runsFrom":"my tools"},
        "streamingServer":{"usb":"adb","headsets":[]},
        "at":[{"seconds":10,"usb":["B","C"]},{"seconds":20,"usb":[],"personChooses":"usb"},
              {"seconds":21,"personChooses":"wifi"}])");
    QVERIFY(!scenario.adb.onPath);
    QVERIFY(scenario.adb.hangs);
    QCOMPARE(scenario.adb.runsFrom, QString("my tools"));
    QCOMPARE(scenario.server.arguments(0),
             (QStringList{"--link-delay", "0.5", "--usb-port", "9943"}));
    QVERIFY(!parsed(R"("adb":"none")").adb.onPath);
    QVERIFY(parsed("").adb.onPath);

    ManualClock clock;
    SimPc pc(clock);
    QStringList told;
    pc.modeChoice.set([&told](bool wired) { told << (wired ? "USB" : "Wi-Fi"); });
    scenario::build(scenario, pc);
    QCOMPARE(pc.usb.cable().size(), size_t(1));
    QCOMPARE(pc.usb.cable()[0].state, QString("offline"));
    clock.advance(10000);
    QCOMPARE(pc.usb.cable().size(), size_t(2));
    QCOMPARE(pc.usb.cable()[1].serial, QString("C"));
    QCOMPARE(pc.usb.cable()[1].state, QString("device"));
    clock.advance(11000);
    QVERIFY(pc.usb.cable().empty());
    QCOMPARE(told, (QStringList{"USB", "Wi-Fi"}));
    QCOMPARE(pc.events.lines(),
             (QStringList{"on the USB cable: B, C", "on the USB cable: none",
                          "the person chooses USB", "the person chooses Wi-Fi"}));
}

void ScenarioTest::filesMayBeObjectsTextsOrAbsent()
{
    const Scenario scenario = parsed(R"("files":{
        "set.json":{"wiredOrWireless":1}, "setting.inf":"A;;B;", "session.json":"{ half",
        "openvrpaths.vrpath":null})");
    QCOMPARE(QJsonDocument::fromJson(fileOf(scenario, "set.json").content).object(),
             QJsonObject({{"wiredOrWireless", 1}}));
    QCOMPARE(fileOf(scenario, "set.json").place, ScenarioFile::Home);
    QCOMPARE(fileOf(scenario, "setting.inf").content, QByteArray("A;;B;"));
    QCOMPARE(fileOf(scenario, "session.json").content, QByteArray("{ half"));
    QCOMPARE(fileOf(scenario, "session.json").place, ScenarioFile::Work);
    QVERIFY(!fileOf(scenario, "openvrpaths.vrpath").exists);
}

void ScenarioTest::theDefaultFilesHoldAModeADriverAndALongNumber()
{
    const Scenario scenario = parsed("");
    const auto object = [&scenario](const char *name) {
        return QJsonDocument::fromJson(fileOf(scenario, name).content).object();
    };
    QCOMPARE(object("set.json")["wiredOrWireless"].toInt(), 2);
    QCOMPARE(object("set.json")["D3"].toObject()["codec"].toString(), QString("HEVC"));
    QVERIFY(!object("openvrpaths.vrpath")["runtime"].toArray().isEmpty());
    QCOMPARE(object("openvrpaths.vrpath")["external_drivers"].toArray().size(), 1);
    QVERIFY(object("session.json")["sessionSettings"].toObject().contains("video"));
    QVERIFY(fileOf(scenario, "session.json").content.contains("16045690984503098046"));
    QVERIFY(fileOf(scenario, "setting.inf").content.contains(';'));
}

void ScenarioTest::longNumbersOfAScenarioReachTheFileUnchanged()
{
    const Scenario scenario = parsed(R"("files":{"session.json":{"id":18446744073709551615}})");
    QCOMPARE(fileOf(scenario, "session.json").content,
             QByteArray("{\n    \"id\": 18446744073709551615\n}\n"));
}

KOLM_TEST_MAIN(ScenarioTest)
#include "tst_scenario.moc"
