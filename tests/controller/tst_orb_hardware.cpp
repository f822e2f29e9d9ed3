#include "tests/controller/controller_test.h"

namespace {

// A PC that can stream by the rules below, with a driver of this version.
PcFixture::Describe goodPc(quint64 driver)
{
    return [driver](SimPc &pc) {
        pc.registry.setText(
            "HKEY_LOCAL_MACHINE\\HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0",
            "ProcessorNameString", "Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz");
        pc.facts.adapters.set({{0x10de, 1, "NVIDIA GeForce RTX 4070", 1}});
        pc.facts.displayDevices.set({{{true, {{"NVIDIA", driver}}}}});
    };
}

constexpr quint64 newDriver = 0x001f'0000'000f'1438; // 31.0.15.5176
constexpr quint64 oldDriver = 0x001f'0000'000f'0e9d; // 31.0.15.3741

const QByteArray rules = R"({"cpu":{"mid":["i7"]},"graphics":{"high":["RTX 4070"]}})";

} // namespace

// What this PC is, can do, and lacks, as the pages are told.
class TestOrbHardware : public ControllerTest
{
    Q_OBJECT

private slots:
    void thePcIsLookedAtWhenTheFirstModeIsChosen()
    {
        writeFile("compare.json", rules);
        ControllerFixture f(dir(), steamRunning(), goodPc(newDriver));
        QCOMPARE(f.orb().systemInfo(), QString("[]"));
        QCOMPARE(f.orb().simplySystemInfo(), QString("[]"));
        QVERIFY(!f.orb().nvidiaAvailable());
        QStringList seen; // by a page that reads on each announcement
        QObject::connect(&f.orb(), &ORBManager::systemInfoChange, [&] {
            seen << (f.orb().systemInfo() == "[]" ? "empty" : "lists");
            seen << (f.orb().nvidiaAvailable() ? "name" : "no name yet");
            QVERIFY(!f.linkMade);
        });
        QObject::connect(&f.orb(), &ORBManager::pcHardwareChange, [&] {
            seen << (f.orb().pcHardware() == ORBManager::AdviceHardware ? "good" : "bad");
            QVERIFY(!f.linkMade);
        });
        f.orb().setProperty("wired", false);
        QCOMPARE(seen, QStringList({"lists", "no name yet", "good"}));
        QCOMPARE(f.emitted.mid(0, 2), QStringList({"systemInfoChange", "pcHardwareChange"}));
        QVERIFY(f.linkMade);
        QVERIFY(f.orb().nvidiaAvailable());
        QVERIFY(f.orb().simplySystemInfo().contains("NVIDIA GeForce RTX 4070"));

        // Once per run.
        f.emitted.clear();
        f.pass(5000);
        f.orb().setProperty("wired", true);
        QCOMPARE(f.count("systemInfoChange") + f.count("pcHardwareChange"), 0);
    }

    void everyReadOfTheVerdictIsReported()
    {
        writeFile("compare.json", rules);
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning(), goodPc(newDriver));
        f.orb();
        f.events.clear();
        f.emitted.clear();
        QCOMPARE(f.orb().pcHardware(), ORBManager::AdviceHardware);
        QCOMPARE(f.orb().property("pcHardware").toInt(), 2);
        QCOMPARE(f.events.size(), 2);
        QCOMPARE(f.events[1].first,
                 QString("streamingAssistant_streaming_wirelessStreaming_0_0_page_view"));
        QCOMPARE(f.events[1].second, (QJsonObject{{"is_available", true}}));
        QVERIFY(f.emitted.isEmpty());

        QVERIFY(QFile::remove("compare.json"));
        announce("cpu or gpu not match");
        QCOMPARE(f.orb().pcHardware(), ORBManager::NotCanRun);
        QCOMPARE(f.events.last().second, (QJsonObject{{"is_available", false}}));
        f.pc.facts.osVersion.set("8.1");
        announce("system not match");
        QCOMPARE(f.orb().pcHardware(), ORBManager::NotCanRun);
        QCOMPARE(f.events.size(), 4);
    }

    void theVerdictOfAWiredPcIsReportedAsWired()
    {
        writeFile("compare.json", rules);
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning(), goodPc(newDriver));
        f.orb().pcHardware();
        QCOMPARE(f.events.last().first,
                 QString("streamingAssistant_streaming_wiredStreaming_0_0_page_view"));
    }

    void anOldDriverIsToldOfBeforeTheReport()
    {
        writeFile("compare.json", rules);
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning(), goodPc(oldDriver));
        f.orb();
        f.events.clear();
        f.emitted.clear();
        int reportedBefore = -1;
        QObject::connect(&f.orb(), &ORBManager::showUpdateGPUPage,
                         [&] { reportedBefore = f.events.size(); });
        QCOMPARE(f.orb().pcHardware(), ORBManager::AdviceHardware);
        QCOMPARE(f.emitted, QStringList{"showUpdateGPUPage"});
        QCOMPARE(reportedBefore, 0);
        QCOMPARE(f.events.size(), 1);

        // Who cannot stream is not asked to update.
        f.emitted.clear();
        writeFile("compare.json", "{}");
        announce("cpu or gpu not match");
        f.orb().pcHardware();
        QVERIFY(f.emitted.isEmpty());
    }

    void av1IsOfferedForTheCardAndTheHeadset()
    {
        writeFile("compare.json", rules);
        store(LinkKind::Wireless); // the last headset was a D3
        ControllerFixture f(dir(), steamRunning(), goodPc(newDriver));
        QVERIFY(f.orb().av1Available());
        f.orb().connectVR("D2A", "10.0.0.7");
        QVERIFY(!f.orb().av1Available());
        f.orb().connectVR("D3B", "10.0.0.8");
        QVERIFY(f.orb().av1Available());
        QVERIFY(QFile::remove("compare.json"));
        QVERIFY(!f.orb().av1Available());
    }

    void theCablesInstallerIsStartedOnlyWhereTheCableIsMissing()
    {
        ControllerFixture f(dir());
        QVERIFY(!f.orb().installAudio());
        const QString started = "launch C:/KOLM/installaudio/VBCABLE_Setup_x64.exe (elevated) "
                                "in C:/KOLM";
        QCOMPARE(f.pc.journal.lines(), QStringList{started});
        // A second cable goes by another name.
        f.pc.facts.recordingDevices.set({"CABLE Output (2- VB-Audio Virtual Cable)"});
        QVERIFY(!f.orb().installAudio());
        QCOMPARE(f.pc.journal.lines(), QStringList({started, started}));
        f.pc.facts.recordingDevices.set({"CABLE Output (VB-Audio Virtual Cable)"});
        QVERIFY(f.orb().installAudio());
        QCOMPARE(f.pc.journal.lines().size(), 2);
    }

    void theUserSeesWhoHasSignedTheCablesInstaller()
    {
        ControllerFixture f(dir());
        f.orb();
        f.emitted.clear();
        QVERIFY(!f.orb().installAudio());
        QCOMPARE(f.emitted, QStringList("showToast(即将启动由“VB-Audio”签名的安装程序,5000)"));
        f.emitted.clear();
        f.pc.journal.clear();
        f.pc.facts.installerSigner.set("");
        announce("install audio: nobody has signed the installer, it is not started");
        QVERIFY(!f.orb().installAudio());
        QCOMPARE(f.emitted,
                 QStringList("showToast(虚拟声卡的安装程序没有有效的签名，未启动,5000)"));
        QVERIFY(f.pc.journal.lines().isEmpty());
    }

    void whoBlocksThePortsIsNamed()
    {
        ControllerFixture f(dir());
        f.orb().checkPortUsage();
        const quint32 helper = f.pc.processes.start("vrserver.exe");
        f.pc.ports.open(helper, 9943);
        f.pc.ports.open(f.pc.processes.start("adb.exe"), 50000);
        f.pc.ports.open(f.pc.processes.start("steam.exe"), 50001);
        f.orb().checkPortUsage();
        QVERIFY(f.emitted.isEmpty());

        f.pc.ports.open(f.pc.processes.start("node.exe"), 9944);
        f.pc.ports.open(f.pc.processes.start("nginx.exe"), 9943);
        f.orb().checkPortUsage();
        QCOMPARE(f.emitted, QStringList{"showUseProtPage(node.exe, nginx.exe)"});
    }
};

KOLM_TEST_MAIN(TestOrbHardware)
#include "tst_orb_hardware.moc"
