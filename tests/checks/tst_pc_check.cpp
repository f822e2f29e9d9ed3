#include "checks/pc_check.h"

#include "simpc/scenario_files.h"
#include "sysinfo/system_info.h"
#include "tests/simpc/scenario_text.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace {

QJsonArray columnsOf(const QString &json)
{
    return QJsonDocument::fromJson(json.toUtf8()).array();
}

QString valueIn(const QJsonArray &columns, int column, int row)
{
    return columns[column].toArray()[1].toArray()[row].toArray()[1].toString();
}

// With its files in the working folder, the rules among them.
Scenario laidOut(const QString &name, const QString &dir)
{
    QString error;
    const Scenario scenario = scenario::load(name, &error);
    if (!error.isEmpty() || !scenario::layOutFiles(scenario.files, dir, dir, &error))
        qFatal("%s", qPrintable(error));
    return scenario;
}

// A PC of a scenario that there is.
struct LaidOutPc : ScenarioPc
{
    LaidOutPc(const QString &name, const QString &dir) : ScenarioPc(laidOut(name, dir)) {}
};

} // namespace

class TestPcCheck : public TestCase
{
    Q_OBJECT

private slots:
    void theListsAreEmptyBeforeTheFirstLook()
    {
        ManualClock clock;
        SimPc pc(clock);
        const SystemInfo system;
        const PcCheck check(system);
        QCOMPARE(check.systemInfo(), QString("[]"));
        QCOMPARE(check.simplySystemInfo(), QString("[]"));
        QCOMPARE(check.gpuName(), QString());
        QCOMPARE(check.cpuName(), QString());
    }

    void theListsCompareThePcWithWhatIsNeeded()
    {
        const LaidOutPc pc("laptop-with-two-adapters", dir());
        const SystemInfo system;
        PcCheck check(system);
        check.compare();
        const QString gpus = "NVIDIA GeForce RTX 3060 Laptop GPU/Intel(R) UHD Graphics 630";
        const QString cpu = "Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz";
        const auto column = [](const char *title, const QStringList &values) {
            return QStringLiteral(R"(["%1",[["操作系统：","%2"],["处理器：","%3"],["内存：","%4"],)"
                                  R"(["显卡：","%5"],["DirectX 版本：","%6"]]])")
                .arg(title, values[0], values[1], values[2], values[3], values[4]);
        };
        const QStringList columns{
            column("当前配置", {"Windows 10 Pro", cpu, "16 GB RAM", gpus, "DirectX 11.0"}),
            column("最低配置", {"Windows 10", SystemInfo::minimumCpu(), "8 GB RAM",
                                SystemInfo::minimumGpu(), "DirectX 11"}),
            column("推荐配置", {"Windows 10/11", SystemInfo::recommendedCpu(), "16 GB RAM",
                                SystemInfo::recommendedGpu(), "DirectX 11"})};
        QCOMPARE(check.systemInfo(), "[" + columns.join(',') + "]");
        QCOMPARE(check.simplySystemInfo(),
                 QStringLiteral(R"([["处理器：","%1"],["显卡：","%2"]])").arg(cpu, gpus));
    }

    void theCardThatDrawsGamesIsTheOneJudged_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<QString>("gpu");
        QTest::newRow("one card") << "one-headset"
                                  << "NVIDIA GeForce RTX 3060";
        QTest::newRow("two adapters") << "laptop-with-two-adapters"
                                      << "NVIDIA GeForce RTX 3060 Laptop GPU";
        QTest::newRow("the integrated one") << "single-amd"
                                            << "AMD Radeon RX 6600 XT";
        QTest::newRow("none") << "no-graphics-driver"
                              << "";
    }
    void theCardThatDrawsGamesIsTheOneJudged()
    {
        QFETCH(QString, scenario);
        const LaidOutPc pc(scenario, dir());
        const SystemInfo system;
        PcCheck check(system);
        check.rememberNames();
        QTEST(check.gpuName(), "gpu");
        QCOMPARE(check.cpuName(), QString("Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz"));
    }

    void everyKindOfPcIsJudged_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<bool>("canRun");
        QTest::addColumn<bool>("driverTooOld");
        QTest::addColumn<QString>("complaint");
        QTest::addColumn<QString>("shownGpu");
        QTest::addColumn<QString>("shownRam");
        const QString weak = "cpu or gpu not match";
        const QString rtx = "NVIDIA GeForce RTX 3060";
        const QString rx = "AMD Radeon RX 6600 XT";
        const QString uhd = "Intel(R) UHD Graphics 770";
        const QString ram = "16 GB RAM";
        QTest::newRow("a usual PC") << "one-headset" << true << false << "" << rtx << ram;
        QTest::newRow("Intel and NVIDIA")
            << "laptop-with-two-adapters" << true << false << ""
            << "NVIDIA GeForce RTX 3060 Laptop GPU/Intel(R) UHD Graphics 630" << ram;
        QTest::newRow("single AMD") << "single-amd" << true << false << "" << rx << ram;
        QTest::newRow("Intel, then AMD")
            << "intel-then-amd" << true << false << "" << rx + "/" + uhd << ram;
        QTest::newRow("AMD, then Intel")
            << "amd-then-intel" << false << false << weak << uhd << ram;
        QTest::newRow("basic render driver only")
            << "no-graphics-driver" << false << false << weak << "" << ram;
        QTest::newRow("exactly 8 GiB")
            << "exactly-8-gib" << true << false << "" << rtx << "9 GB RAM";
        QTest::newRow("old driver") << "old-graphics-driver" << true << true << "" << rtx << ram;
        QTest::newRow("Windows 8.1")
            << "windows-8-1" << false << false << "system not match" << rtx << ram;
        QTest::newRow("card not listed")
            << "card-not-listed" << false << false << weak << "NVIDIA GeForce GT 710" << ram;
    }
    void everyKindOfPcIsJudged()
    {
        QFETCH(QString, scenario);
        QFETCH(bool, canRun);
        QFETCH(bool, driverTooOld);
        QFETCH(QString, complaint);
        QFETCH(QString, shownGpu);
        QFETCH(QString, shownRam);
        const LaidOutPc pc(scenario, dir());
        const SystemInfo system;
        PcCheck check(system);
        check.compare();
        check.rememberNames();
        QCOMPARE(valueIn(columnsOf(check.systemInfo()), 0, 3), shownGpu);
        QCOMPARE(valueIn(columnsOf(check.systemInfo()), 0, 2), shownRam);
        if (!complaint.isEmpty())
            announce(complaint);
        const PcCheck::Verdict verdict = check.judge();
        QCOMPARE(verdict.canRun, canRun);
        QCOMPARE(verdict.driverTooOld, driverTooOld);
    }

    void systemsBelowTenAreTooOldAndNothingElseIsLookedAt_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<bool>("enough");
        QTest::newRow("Windows 10 and 11") << "10" << true;
        QTest::newRow("a later count") << "11" << true;
        QTest::newRow("8.1") << "8.1" << false;
        QTest::newRow("8") << "8" << false;
        QTest::newRow("7 with a service pack") << "7sp1" << false;
        QTest::newRow("unknown") << "unknown" << false;
        QTest::newRow("nothing") << "" << false;
    }
    void systemsBelowTenAreTooOldAndNothingElseIsLookedAt()
    {
        QFETCH(QString, version);
        QFETCH(bool, enough);
        LaidOutPc pc("one-headset", dir());
        pc.pc.facts.osVersion.set(version);
        const SystemInfo system;
        PcCheck check(system);
        check.rememberNames();
        clearLog();
        if (!enough)
            announce("system not match");
        QCOMPARE(check.judge().canRun, enough);
        if (!enough)
            QCOMPARE(logged(), QStringList{"system not match"});
    }

    void theScoreDecidesAtEight_data()
    {
        QTest::addColumn<QByteArray>("rules");
        QTest::addColumn<bool>("enough");
        QTest::newRow("0") << QByteArray("{}") << false;
        QTest::newRow("4, processor") << QByteArray(R"({"cpu":{"mid":["i7"]}})") << false;
        QTest::newRow("5") << QByteArray(R"({"cpu":{"low":["i7"]},"graphics":{"mid":["RTX"]}})")
                           << false;
        QTest::newRow("8, both sufficient")
            << QByteArray(R"({"cpu":{"mid":["i7"]},"graphics":{"mid":["RTX"]}})") << true;
        QTest::newRow("8, the card alone")
            << QByteArray(R"({"graphics":{"high":["RTX"]}})") << true;
        QTest::newRow("12") << QByteArray(R"({"cpu":{"mid":["i7"]},"graphics":{"high":["RTX"]}})")
                            << true;
    }
    void theScoreDecidesAtEight()
    {
        QFETCH(QByteArray, rules);
        QFETCH(bool, enough);
        const LaidOutPc pc("one-headset", dir());
        const SystemInfo system;
        PcCheck check(system);
        check.rememberNames();
        // Anew with every question.
        QVERIFY(check.judge().canRun);
        writeFile("compare.json", rules);
        if (!enough)
            announce("cpu or gpu not match");
        QCOMPARE(check.judge().canRun, enough);
        QVERIFY(QFile::remove("compare.json"));
        announce("cpu or gpu not match");
        QVERIFY(!check.judge().canRun);
    }

    void everyScoreBelowEightIsTooLow()
    {
        for (int score = 0; score <= 12; ++score)
            QCOMPARE(PcCheck::isEnough(score), score >= 8);
    }

    void withoutANameNoFragmentMatches()
    {
        const LaidOutPc pc("one-headset", dir());
        const SystemInfo system;
        const PcCheck check(system);
        announce("cpu or gpu not match");
        QVERIFY(!check.judge().canRun);
    }

    void ourOwnProgramsBlockNothing_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QStringList>("others");
        QTest::newRow("none") << QStringList{} << QStringList{};
        QTest::newRow("SteamVR") << QStringList{"vrserver.exe", "vrmonitor.exe", "myvrtool.exe"}
                                 << QStringList{};
        QTest::newRow("Steam") << QStringList{"steam.exe", "steamwebhelper.exe", "steam"}
                               << QStringList{};
        QTest::newRow("adb") << QStringList{"adb.exe"} << QStringList{};
        QTest::newRow("the idle process")
            << QStringList{"[System Process]", "System Process"} << QStringList{};
        QTest::newRow("letter case counts")
            << QStringList{"VRserver.exe", "Steam.exe", "ADB.exe", "system process"}
            << QStringList{"VRserver.exe", "Steam.exe", "ADB.exe", "system process"};
        QTest::newRow("others stay, in their order")
            << QStringList{"node.exe", "adb.exe", "nginx.exe", "node.exe"}
            << QStringList{"node.exe", "nginx.exe", "node.exe"};
        QTest::newRow("the system itself") << QStringList{"System"} << QStringList{"System"};
    }
    void ourOwnProgramsBlockNothing()
    {
        QFETCH(QStringList, names);
        QTEST(PcCheck::withoutOurOwn(names), "others");
    }

    void onlyTheStreamingPortsAreLookedAt_data()
    {
        QTest::addColumn<int>("port");
        QTest::addColumn<bool>("blocks");
        for (int port : {9943, 9944, 50000, 50001})
            QTest::addRow("%d", port) << port << true;
        for (int port : {9932, 9942, 9945, 49999, 50002, 80})
            QTest::addRow("%d", port) << port << false;
    }
    void onlyTheStreamingPortsAreLookedAt()
    {
        QFETCH(int, port);
        QFETCH(bool, blocks);
        ManualClock clock;
        SimPc pc(clock);
        pc.ports.open(pc.processes.start("node.exe"), static_cast<quint16>(port));
        QCOMPARE(PcCheck::portBlockers(), blocks ? QStringList{"node.exe"} : QStringList{});
    }

    void takenPortsBlockUntilTheirProgramsEnd()
    {
        LaidOutPc pc("ports-taken", dir());
        QCOMPARE(PcCheck::portBlockers(), QStringList({"node.exe", "nginx.exe"}));
        pc.clock.advance(60000);
        QCOMPARE(PcCheck::portBlockers(), QStringList());
    }

    void portsTakenByOurHelpersBlockNothing()
    {
        const LaidOutPc pc("ports-taken-by-helpers", dir());
        QCOMPARE(PcCheck::portBlockers(), QStringList());
    }

    void soundIsSupportedWhereTheFirstDeviceIsStereo()
    {
        LaidOutPc pc("surround-speakers", dir());
        SystemInfo system;
        QVERIFY(!system.isAudioOutputSupported());
        pc.clock.advance(60000);
        QVERIFY(system.isAudioOutputSupported());
    }

    void thePcsOfTheScenariosSoundAsTheySay_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<bool>("audio");
        QTest::addColumn<bool>("cable");
        QTest::newRow("usual") << "one-headset" << true << false;
        QTest::newRow("none") << "no-audio" << false << false;
        QTest::newRow("missing") << "cable-missing" << true << false;
        QTest::newRow("present") << "cable-present" << true << true;
    }
    void thePcsOfTheScenariosSoundAsTheySay()
    {
        QFETCH(QString, scenario);
        const LaidOutPc pc(scenario, dir());
        SystemInfo system;
        QTEST(system.isAudioOutputSupported(), "audio");
        QTEST(SystemInfo::hasVirtualCable(), "cable");
    }
};

KOLM_TEST_MAIN(TestPcCheck)
#include "tst_pc_check.moc"
