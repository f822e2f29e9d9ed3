#include "base/manual_clock.h"
#include "pc/processes.h"
#include "simpc/sim_pc.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QJsonObject>
#include <QProcess>

#include <thread>

namespace {

const QString localMachine = QStringLiteral("HKEY_LOCAL_MACHINE\\");

} // namespace

class TestSystemInfo : public TestCase
{
    Q_OBJECT

private slots:
    void theDescriptionHoldsNineTextsFromTheRegistryAndTheMemory()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.registry.setText(localMachine + "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion",
                            "ProductName", "Windows 10 Home");
        pc.registry.setText(localMachine + "SOFTWARE\\Microsoft\\Cryptography", "MachineGuid",
                            "0f-1e");
        pc.registry.setText(localMachine + "HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0",
                            "ProcessorNameString", "Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz");
        pc.facts.adapters.set({});
        SystemInfo info;
        const QJsonObject expected{{"streamingAssistantVersion", KOLM_VERSION},
                                   {"GUID", "0f-1e"},
                                   {"os", "Windows 10 Home"},
                                   {"cpu", "Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz"},
                                   {"ram", "16 GB RAM"},
                                   {"integratedGraphics", ""},
                                   {"discreteGraphics", ""},
                                   {"vram", ""},
                                   {"deciveSN", ""}};
        QCOMPARE(info.toJson(), expected);
        QCOMPARE(info.cpuName(), QString("Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz"));
        QVERIFY(info.gpuNames().isEmpty());
    }

    void theProbeKnowsTheGraphicsOfThePc()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.adapters.set({{0x8086, 0x3e9b, "Intel(R) UHD Graphics 630", 128U << 20},
                               {0x10de, 0x1f08, "NVIDIA GeForce RTX 2060", 6ULL * (1U << 30) - 1},
                               {0x1414, 0x8c, "Microsoft Basic Render Driver", 0}});
        const SystemInfo info;
        QCOMPARE(info.gpuNames(),
                 QStringList({"NVIDIA GeForce RTX 2060", "Intel(R) UHD Graphics 630"}));
        const QJsonObject json = info.toJson();
        QCOMPARE(json.value("discreteGraphics").toString(), QString("NVIDIA GeForce RTX 2060"));
        QCOMPARE(json.value("integratedGraphics").toString(), QString("Intel(R) UHD Graphics 630"));
        QCOMPARE(json.value("vram").toString(), QString("6GB"));
        QCOMPARE(info.directXText(), QString("DirectX 11.0"));

        // Asked once: a card that comes later is not seen.
        pc.facts.adapters.set({});
        QCOMPARE(info.gpuNames().size(), 2);
        QVERIFY(SystemInfo().gpuNames().isEmpty());
    }

    void onlyOneAdapterIsNamedWhereThereIsOne_data()
    {
        QTest::addColumn<quint32>("vendor");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("discrete") << 0x10deU << QStringList{"Card"};
        QTest::newRow("integrated") << 0x8086U << QStringList{"Card"};
        QTest::newRow("software") << 0x1414U << QStringList{};
    }
    void onlyOneAdapterIsNamedWhereThereIsOne()
    {
        QFETCH(quint32, vendor);
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.adapters.set({{vendor, 0x8c, "Card", 0}});
        QTEST(SystemInfo().gpuNames(), "names");
    }

    void aPcWhoseDirect3DFailsHasAnUnknownLevel()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.direct3D.set({0x887a0004, 0});
        QCOMPARE(SystemInfo().directXText(), QString("Unknown DirectX version"));
        pc.facts.direct3D.set({feature_level::invalidArgument, 0});
        QCOMPARE(SystemInfo().directXText(),
                 QString("Current operation system DirectX is not supported!"));
    }

    void missingRegistryValuesAreEmptyTexts()
    {
        ManualClock clock;
        SimPc pc(clock);
        SystemInfo info;
        QCOMPARE(info.toJson().value("os"), QJsonValue(QString()));
        QCOMPARE(info.toJson().value("GUID"), QJsonValue(QString()));
    }

    void memoryIsRoundedUpByOne_data()
    {
        QTest::addColumn<quint64>("bytes");
        QTest::addColumn<QString>("text");
        const quint64 gib = 1ULL << 30;
        QTest::newRow("a little under 16 GiB") << 16 * gib - 1 << "16 GB RAM";
        QTest::newRow("exactly 16 GiB") << 16 * gib << "17 GB RAM";
        QTest::newRow("nothing known") << quint64(0) << "1 GB RAM";
    }
    void memoryIsRoundedUpByOne()
    {
        QFETCH(quint64, bytes);
        QFETCH(QString, text);
        QCOMPARE(SystemInfo::ramTextOf(bytes), text);
    }

    void anEmptySerialKeepsTheStoredOne()
    {
        ManualClock clock;
        SimPc pc(clock);
        SystemInfo info;
        info.setDeviceSN("D3A1");
        QCOMPARE(info.toJson().value("deciveSN").toString(), QString("D3A1"));
        info.setDeviceSN(QString());
        QCOMPARE(info.toJson().value("deciveSN").toString(), QString("D3A1"));
        info.setDeviceSN("D3B2");
        QCOMPARE(info.toJson().value("deciveSN").toString(), QString("D3B2"));
    }

    void anyThreadMayAskForTheDescription()
    {
        ManualClock clock;
        SimPc pc(clock);
        SystemInfo info;
        info.setDeviceSN("0");
        std::thread asking([&info] {
            QString serial;
            while (serial != "100")
                serial = info.toJson().value("deciveSN").toString();
        });
        for (int i = 1; i <= 100; ++i)
            info.setDeviceSN(QString::number(i));
        asking.join();
        QCOMPARE(info.toJson().value("deciveSN").toString(), QString("100"));
    }

    void publicWinsOverPrivate_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("category");
        QTest::newRow("private") << "NetworkCategory  : Private\r\n"
                                 << "Private";
        QTest::newRow("public") << "NetworkCategory  : Public\r\n"
                                << "Public";
        QTest::newRow("both") << "NetworkCategory  : Private\r\nNetworkCategory  : Public\r\n"
                              << "Public";
        QTest::newRow("neither") << "NetworkCategory  : DomainAuthenticated\r\n"
                                 << "";
        QTest::newRow("other letter case") << "public private"
                                           << "";
        QTest::newRow("nothing") << ""
                                 << "";
    }
    void publicWinsOverPrivate()
    {
        QFETCH(QString, output);
        QFETCH(QString, category);
        QCOMPARE(SystemInfo::networkCategoryOf(output), category);
    }

    void theNetworkIsPrivateUntilTheQueryHasAnswered()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.network.set({"Public"});
        SystemInfo info;
        QCOMPARE(info.networkCategory(), QString("Private"));
        QTRY_COMPARE(info.networkCategory(), QString("Public"));
        QCOMPARE(loggedCount("powershellcmd res:NetworkCategory  : Public\n"), 1);
    }

    void aQueryThatSaysNothingOfUseClearsTheCategory()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.network.set({"DomainAuthenticated"});
        SystemInfo info;
        QTRY_COMPARE(info.networkCategory(), QString());
    }

    void withoutTheQuerysProgramTheNetworkStaysPrivate()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.networkQuery.set(SimNetworkQuery::Missing);
        SystemInfo info;
        auto *query = info.findChild<QProcess *>();
        QVERIFY(query);
        QTRY_COMPARE(query->error(), QProcess::FailedToStart);
        QCOMPARE(info.networkCategory(), QString("Private"));
        QVERIFY(logged().isEmpty());
    }

    void aQueryThatHangsHoldsNothingUp()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.networkQuery.set(SimNetworkQuery::Hangs);
        qint64 pid = 0;
        {
            SystemInfo info;
            auto *query = info.findChild<QProcess *>();
            QVERIFY(query);
            // The probe did not even wait for it to start.
            QTRY_COMPARE(query->state(), QProcess::Running);
            pid = query->processId();
            QCOMPARE(info.networkCategory(), QString("Private"));
            QVERIFY(QFile::exists(QStringLiteral("/proc/%1").arg(pid)));
        }
        // It ends with the program, which does not wait for it.
        QVERIFY(!QFile::exists(QStringLiteral("/proc/%1").arg(pid)));
        QVERIFY(logged().isEmpty());
    }

    void theFirstWaveOutDeviceDecides_data()
    {
        QTest::addColumn<QVector<int>>("channels");
        QTest::addColumn<bool>("supported");
        QTest::newRow("stereo") << QVector<int>{2} << true;
        QTest::newRow("none") << QVector<int>{} << false;
        QTest::newRow("mono first, stereo second") << QVector<int>{1, 2} << false;
        QTest::newRow("5.1 first, stereo second") << QVector<int>{6, 2} << false;
        QTest::newRow("stereo first, 5.1 second") << QVector<int>{2, 6} << true;
    }
    void theFirstWaveOutDeviceDecides()
    {
        QFETCH(QVector<int>, channels);
        QFETCH(bool, supported);
        ManualClock clock;
        SimPc pc(clock);
        answers::WaveOuts devices;
        for (int count : channels)
            devices.push_back({count, "Speakers"});
        pc.facts.waveOuts.set(devices);
        SystemInfo info;
        QCOMPARE(info.isAudioOutputSupported(), supported);
    }

    void stereoOnceIsStereoForGood()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.waveOuts.set({{6, "Cinema"}});
        SystemInfo info;
        QVERIFY(!info.isAudioOutputSupported());
        pc.facts.waveOuts.set({{2, "Headphones"}});
        QVERIFY(info.isAudioOutputSupported());
        QCOMPARE(loggedCount("audio supoort :6Cinema"), 1);
        QCOMPARE(loggedCount("audio supoort :2Headphones"), 1);
        pc.facts.waveOuts.set({});
        QVERIFY(info.isAudioOutputSupported());
    }

    void theVirtualCableIsKnownByItsExactName_data()
    {
        QTest::addColumn<QStringList>("devices");
        QTest::addColumn<bool>("present");
        const QString cable = "CABLE Output (VB-Audio Virtual Cable)";
        QTest::newRow("there") << QStringList{"Microphone", cable} << true;
        QTest::newRow("no device") << QStringList{} << false;
        QTest::newRow("a second cable only")
            << QStringList{"CABLE Output (2- VB-Audio Virtual Cable)"} << false;
        QTest::newRow("other letter case") << QStringList{cable.toLower()} << false;
        QTest::newRow("behind a name that cannot be read")
            << QStringList{QString(QChar::ReplacementCharacter) + "x", QString(), cable} << true;
    }
    void theVirtualCableIsKnownByItsExactName()
    {
        QFETCH(QStringList, devices);
        QFETCH(bool, present);
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.recordingDevices.set(devices);
        QCOMPARE(SystemInfo::hasVirtualCable(), present);
    }

    void devicesOfOneNameAreLoggedOnce()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.recordingDevices.set({"Microphone", "Microphone", "Line In"});
        QVERIFY(!SystemInfo::hasVirtualCable());
        QCOMPARE(logged(), QStringList{"(\"Microphone\", \"Line In\")"});
    }

    void theCablesInstallerIsStartedWithRightsAndNotWaitedFor_data()
    {
        QTest::addColumn<bool>("starts");
        QTest::addColumn<uint>("error");
        QTest::addColumn<QString>("result");
        QTest::newRow("started") << true << 0U << "42";
        QTest::newRow("refused by the user") << false << 5U << "5";
        QTest::newRow("missing") << false << 2U << "2";
    }
    void theCablesInstallerIsStartedWithRightsAndNotWaitedFor()
    {
        QFETCH(bool, starts);
        QFETCH(uint, error);
        QFETCH(QString, result);
        ManualClock clock;
        SimPc pc(clock);
        pc.launches.on("VBCABLE_Setup_x64.exe", [&](const SimLaunch &request) {
            [&] { QVERIFY(request.elevated && !request.hidden && request.parameters.isEmpty()); }();
            return SimLaunchResult{starts, error, true, -1};
        });
        SystemInfo::installVirtualCable("C:/星程 KOLM");
        QCOMPARE(pc.journal.lines(),
                 QStringList{"launch C:/星程 KOLM/installaudio/VBCABLE_Setup_x64.exe "
                             "(elevated) in C:/星程 KOLM"});
        QCOMPARE(logged(), QStringList({"C:/星程 KOLM", "install audio res: " + result}));
        QCOMPARE(clock.slept(), qint64(0));
    }

    void processesAreFoundByTheirExactName()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.processes.start("adb.exe", "C:/one/adb.exe");
        pc.processes.start("adb.exe", "C:/two/adb.exe");
        QVERIFY(SystemInfo::isProcessRunning("adb.exe"));
        QVERIFY(!SystemInfo::isProcessRunning("ADB.exe"));
        QVERIFY(!SystemInfo::isProcessRunning("adb"));
        QCOMPARE(SystemInfo::processPath("adb.exe"), QString("C:/one/adb.exe"));
        QCOMPARE(SystemInfo::processPath("other.exe"), QString());
    }

    void namesThatAreNotPlainAreFoundWhereTheUsersEncodingIsUtf8()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.processes.start("串流.exe", "C:/串流.exe");
        QCOMPARE(SystemInfo::isProcessRunning("串流.exe"),
                 QString("串流").toLocal8Bit() == QString("串流").toUtf8());
        QVERIFY(!SystemInfo::isProcessRunning(""));
    }

    void aProcessIsAskedForItsPathByItsNumber()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.processes.start("adb.exe", "C:/one/adb.exe");
        const quint32 pid = pc.processes.start("adb.exe", "C:/two/adb.exe");
        QCOMPARE(SystemInfo::modulePathOf(pid), QString("C:/two/adb.exe"));
        QCOMPARE(SystemInfo::modulePathOf(pid + 1), QString());
        pc.processes.end(pid);
        QCOMPARE(SystemInfo::modulePathOf(pid), QString());
    }

    void killingTakesEveryProcessOfTheNameAndNoOther()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.processes.start("adb.exe");
        pc.processes.start("Adb.exe");
        pc.processes.start("steam.exe");
        pc.processes.start("adb.exe");
        SystemInfo::killProcesses({"ADB.EXE", "adb", ""});
        QCOMPARE(pc.processes.list().size(), size_t(4));
        SystemInfo::killProcesses({"other.exe", "adb.exe"});
        QStringList left;
        for (const processes::Entry &process : pc.processes.list())
            left.append(process.name);
        QCOMPARE(left, QStringList({"Adb.exe", "steam.exe"}));
        QCOMPARE(pc.journal.lines(), QStringList({"terminate adb.exe", "terminate adb.exe"}));
    }

    void aSystemThatCannotBeAskedNeedsNoUpdate()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.displayDevices.set(std::nullopt);
        QCOMPARE(SystemInfo::nvidiaDriverVersions(), QStringList());
        QCOMPARE(logged(), QStringList{"SetupDiGetClassDevs failed"});
        QVERIFY(!SystemInfo::needGpuDriverUpdate());
    }

    void thePcsOwnDriversDecide_data()
    {
        QTest::addColumn<quint64>("version");
        QTest::addColumn<bool>("needed");
        QTest::newRow("old") << quint64(0x001f'0000'000f'0e9d) << true; // 31.0.15.3741
        QTest::newRow("new") << quint64(0x001f'0000'000f'1438) << false;
    }
    void thePcsOwnDriversDecide()
    {
        QFETCH(quint64, version);
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.displayDevices.set({{{false, {}}, {true, {{"NVIDIA", version}}}}});
        QTEST(SystemInfo::needGpuDriverUpdate(), "needed");
    }

    void thePcIsAskedForItsPorts()
    {
        ManualClock clock;
        SimPc pc(clock);
        const quint32 node = pc.processes.start("node.exe");
        const quint32 vrserver = pc.processes.start("vrserver.exe");
        pc.processes.start("node.exe");
        pc.ports.open(vrserver, 9943);
        pc.ports.open(node, 50000);
        pc.ports.open(node, 80);
        QCOMPARE(SystemInfo::processesUsingPorts({9943, 9944, 50001, 50000}),
                 QStringList({"node.exe", "vrserver.exe"}));
        pc.processes.end(node);
        QCOMPARE(SystemInfo::processesUsingPorts({9943, 9944, 50001, 50000}),
                 QStringList{"vrserver.exe"});
        QCOMPARE(SystemInfo::processesUsingPorts({80}), QStringList());
    }

    void aTableThatCannotBeReadIsLoggedAndNamesNobody_data()
    {
        QTest::addColumn<int>("failure");
        QTest::addColumn<quint32>("error");
        QTest::addColumn<QString>("log");
        QTest::newRow("no memory")
            << int(tcp_table::Table::NoMemory) << 0U << "Error allocating memory\n";
        QTest::newRow("no answer")
            << int(tcp_table::Table::NotAnswered) << 122U << "\tGetTcpTable2 failed with 122\n";
    }
    void aTableThatCannotBeReadIsLoggedAndNamesNobody()
    {
        QFETCH(int, failure);
        QFETCH(QString, log);
        answers::TcpTable table;
        table.failure = static_cast<tcp_table::Table::Failure>(failure);
        QFETCH(quint32, error);
        table.error = error;
        ManualClock clock;
        SimPc pc(clock);
        pc.ports.open(pc.processes.start("node.exe"), 9943);
        pc.facts.tcpTable.set(table);
        QCOMPARE(SystemInfo::processesUsingPorts({9943, 9944, 50001, 50000}), QStringList());
        QCOMPARE(logged(), QStringList{log});
    }

    void theRequirementTextsStandAsTheTranslationsKnowThem()
    {
        QCOMPARE(SystemInfo::minimumCpu(),
                 QString("Intel Core i5-6600/AMD锐龙3 1300X同等性能及以上"));
        QCOMPARE(SystemInfo::minimumGpu(),
                 QString("NVDIA GeFore GTX 970/AMD RX 480 同等性能及以上"));
        QCOMPARE(SystemInfo::minimumOs(), QString("Windows 10"));
        QCOMPARE(SystemInfo::minimumRam(), QString("8 GB RAM"));
        QCOMPARE(SystemInfo::recommendedCpu(),
                 QString("Intel Core i7-9700/AMD 锐龙5 3600 同等性能及以上"));
        QCOMPARE(SystemInfo::recommendedGpu(),
                 QString("NVDIA GeFore RTX 3060/AMD RX 6600XT 同等性能及以上"));
        QCOMPARE(SystemInfo::recommendedOs(), QString("Windows 10/11"));
        QCOMPARE(SystemInfo::recommendedRam(), QString("16 GB RAM"));
        QCOMPARE(SystemInfo::requiredDirectX(), QString("DirectX 11"));
    }
};

KOLM_TEST_MAIN(TestSystemInfo)
#include "tst_system_info.moc"
