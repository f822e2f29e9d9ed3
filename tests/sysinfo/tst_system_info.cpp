#include "base/manual_clock.h"
#include "simpc/sim_pc.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"

#include <QJsonObject>

#include <thread>

namespace {

const QString localMachine = QStringLiteral("HKEY_LOCAL_MACHINE\\");

} // namespace

// What is said of the PC, and what it needs.
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
