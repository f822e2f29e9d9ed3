#include "pc/network_profile.h"
#include "tests/simpc/scenario_text.h"
#include "tests/support/test_case.h"

#include <QProcess>

namespace {

// Out of the class, where moc cannot read them.
const QByteArray pcKeys = R"x("pc":{
        "os":"Windows 11 Home", "cpu":"Some CPU", "machineGuid":"1-2", "memoryBytes":8589934592,
        "acLine":"unknown", "network":["Private","Public"],
        "recordingDevices":["Mic","CABLE Output (VB-Audio Virtual Cable)"],
        "waveOuts":[{"name":"TV","channels":6},{"name":"Phones"}],
        "registry":{"HKEY_CURRENT_USER\\Software\\X":{"a":"1","":"default"}},
        "start":[{"name":"adb.exe","path":"C:\\adb.exe"},{"name":"x.exe"}]})x";
const QByteArray hardwareKeys = R"x("pc":{
        "osVersion":"8.1", "networkQuery":"hangs", "direct3D":"10.1",
        "adapters":[{"vendor":"amd","device":29695,"name":"RX","memoryBytes":8573157376},
                    {"vendor":"microsoft","device":140,"name":"Basic"}],
        "displayDrivers":[{"version":"31.0.15.5176"},{"manufacturer":"AMD","version":"1.2.3.4"}],
        "commands":{"netsh":"it's 100%s\n"},
        "start":[{"name":"a.exe","ports":[9943,80]},{"name":"b.exe"}]})x";

// What the system's query for the network prints.
QString networkAnswer()
{
    const network_profile::Query query = network_profile::query();
    QProcess process;
    process.start(query.program, query.arguments);
    return process.waitForFinished() ? QString::fromUtf8(process.readAll()) : QString("none");
}

} // namespace

class ScenarioPcTest : public TestCase
{
    Q_OBJECT

private slots:
    void withoutANetworkTheQueryPrintsNothing()
    {
        ManualClock clock;
        SimPc pc(clock);
        scenario::build(parsed(R"("pc":{"network":[]})"), pc);
        QCOMPARE(networkAnswer(), QString(""));
    }

    void everyKeyOfThePcArrives()
    {
        const Scenario scenario = parsed(pcKeys);
        ManualClock clock;
        SimPc pc(clock);
        scenario::build(scenario, pc);
        const QString software = "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\";
        const QString processor =
            "HKEY_LOCAL_MACHINE\\HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0";
        QCOMPARE(
            pc.registry.text(software + "Windows NT\\CurrentVersion", "ProductName").value_or("-"),
            QString("Windows 11 Home"));
        QCOMPARE(pc.registry.text(software + "Cryptography", "MachineGuid").value_or("-"),
                 QString("1-2"));
        QCOMPARE(pc.registry.text(processor, "ProcessorNameString").value_or("-"),
                 QString("Some CPU"));
        QCOMPARE(pc.registry.text("HKEY_CURRENT_USER\\Software\\X", "a").value_or("-"),
                 QString("1"));
        QCOMPARE(pc.registry.text("HKEY_CURRENT_USER\\Software\\X", "").value_or("-"),
                 QString("default"));
        QCOMPARE(pc.facts.memoryBytes.get(), quint64(8589934592));
        QCOMPARE(pc.facts.acLine.get(), answers::AcLine(power::AcLine::Unknown));
        QCOMPARE(networkAnswer(),
                 QString("NetworkCategory  : Private\nNetworkCategory  : Public\n"));
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

    void everyKeyOfTheHardwareArrives()
    {
        const Scenario scenario = parsed(hardwareKeys);
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

    void whatDirect3DAnswersIsAWord_data()
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
    void whatDirect3DAnswersIsAWord()
    {
        QFETCH(QByteArray, word);
        ManualClock clock;
        SimPc pc(clock);
        scenario::build(parsed("\"pc\":{\"direct3D\":\"" + word + "\"}"), pc);
        QTEST(pc.facts.direct3D.get().result, "result");
        QTEST(pc.facts.direct3D.get().level, "level");
    }

    void everyPowerLineWordHasItsStatus_data()
    {
        QTest::addColumn<QByteArray>("word");
        QTest::addColumn<int>("status");
        QTest::newRow("online") << QByteArray("online") << 1;
        QTest::newRow("offline") << QByteArray("offline") << 0;
        QTest::newRow("unknown") << QByteArray("unknown") << 255;
        QTest::newRow("fails") << QByteArray("fails") << -1;
    }
    void everyPowerLineWordHasItsStatus()
    {
        QFETCH(QByteArray, word);
        QFETCH(int, status);
        ManualClock clock;
        SimPc pc(clock);
        scenario::build(parsed("\"pc\":{\"acLine\":\"" + word + "\"}"), pc);
        const answers::AcLine line = pc.facts.acLine.get();
        QCOMPARE(line ? static_cast<int>(*line) : -1, status);
    }

    void theTimelineChangesThePcAndTellsSo()
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
        QCOMPARE(networkAnswer(), QString("NetworkCategory  : Public\n"));
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
        QCOMPARE(
            pc.events.lines(),
            QStringList({"power line: offline", "network: Public", "sound outputs: TV (6 channels)",
                         "a.exe starts", "recording devices: none", "sound outputs: none",
                         "b.exe starts", "power line: fails", "recording devices: Mic",
                         "a.exe ends", "steam.exe ends"}));
        QCOMPARE(pc.journal.lines(), QStringList());
    }

    void theCableAndAdbAreAsDescribed()
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
};

KOLM_TEST_MAIN(ScenarioPcTest)
#include "tst_scenario_pc.moc"
