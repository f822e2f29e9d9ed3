#include "pc/network_profile.h"
#include "tests/simpc/scenario_text.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFileInfo>

class ScenarioTest : public TestCase
{
    Q_OBJECT

private slots:
    void everyCompiledInScenarioLoads_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : scenario::names())
            QTest::newRow(qPrintable(name)) << name;
    }
    void everyCompiledInScenarioLoads()
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

    void theCompiledInScenariosAreThoseOfTheFolderAndDiffer()
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
            ScenarioPc laptop(load("on-battery"));
            QCOMPARE(laptop.pc.facts.acLine.get(), answers::AcLine(power::AcLine::Offline));
            laptop.clock.advance(load("on-battery").timeline.at(0).at);
            QCOMPARE(laptop.pc.facts.acLine.get(), answers::AcLine(power::AcLine::Online));
        }
        QVERIFY(ScenarioPc(load("public-network")).pc.facts.network.get().contains("Public"));
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

    void aNameIsFoundWithAndWithoutItsEnding_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("without") << "no-steam";
        QTest::newRow("with") << "no-steam.json";
    }
    void aNameIsFoundWithAndWithoutItsEnding()
    {
        QFETCH(QString, name);
        QString error;
        const Scenario scenario = scenario::load(name, &error);
        QCOMPARE(error, QString());
        QCOMPARE(scenario.name, QString("no-steam"));
        QVERIFY(!scenario.steam.steamInstalled);
    }

    void aFileIsFoundByItsPath()
    {
        writeFile("mine.json", R"({"title":"my own","steam":{"running":true}})");
        for (const QString &file :
             {QString("./mine.json"), path("mine.json"), QString("mine.json")}) {
            QString error;
            const Scenario scenario = scenario::load(file, &error);
            QCOMPARE(error, QString());
            QCOMPARE(scenario.name, QString("mine"));
            QCOMPARE(scenario.title, QString("my own"));
            QVERIFY(scenario.steam.steamRunning);
        }
    }

    void whatIsNotThereIsAnErrorThatNamesTheChoice()
    {
        QString error;
        scenario::load("no-such-thing", &error);
        QCOMPARE(error,
                 "no scenario \"no-such-thing\", neither a file (No such file or directory) nor "
                 "one of: " +
                     scenario::names().join(", "));
    }

    void anErrorInAFileNamesTheScenario()
    {
        writeFile("mine.json", R"({"title":"t","steem":{}})");
        QString error;
        scenario::load("mine.json", &error);
        QCOMPARE(error, QString("scenario mine.json: \"steem\" is not a key of a scenario"));
    }

    void leftOutKeysHaveTheirDefaults()
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
        QCOMPARE(network_profile::query().arguments.value(1),
                 QString("NetworkCategory  : Private\n"));
        QCOMPARE(pc.facts.waveOuts.get().size(), size_t(1));
        QCOMPARE(pc.facts.waveOuts.get()[0].channels, 2);
        QVERIFY(pc.processes.list().empty());
    }

    void everyKeyOfSteamAndSteamVrArrives()
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

    void aBuiltPcIsAsDescribed()
    {
        ManualClock clock;
        SimPc pc(clock);
        scenario::build(parsed(R"("steam":{"running":true,"path":"D:\\S"})"), pc);
        QCOMPARE(pc.registry
                     .text("HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Valve\\Steam", "InstallPath")
                     .value_or("-"),
                 QString("D:\\S"));
        QVERIFY(pc.processes.isRunning("steam.exe"));
        QVERIFY(pc.launches.start({"explorer", "steam://rungameid/250820", false}).started);
        clock.advance(60000);
        QVERIFY(pc.processes.isRunning("vrserver.exe"));
    }
};

KOLM_TEST_MAIN(ScenarioTest)
#include "tst_scenario.moc"
