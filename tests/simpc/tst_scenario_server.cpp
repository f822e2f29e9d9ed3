#include "tests/simpc/scenario_text.h"
#include "tests/support/test_case.h"

class ScenarioServerTest : public TestCase
{
    Q_OBJECT

private slots:
    void theServerMayBeAWord_data()
    {
        QTest::addColumn<QByteArray>("word");
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("pcSetsCell");
        QTest::newRow("sim") << QByteArray("sim") << int(ServerPlan::Program) << false;
        QTest::newRow("external") << QByteArray("external") << int(ServerPlan::External) << true;
        QTest::newRow("never") << QByteArray("never") << int(ServerPlan::Never) << false;
    }
    void theServerMayBeAWord()
    {
        QFETCH(QByteArray, word);
        QFETCH(int, kind);
        QFETCH(bool, pcSetsCell);
        const Scenario scenario = parsed("\"streamingServer\":\"" + word + '"');
        QCOMPARE(int(scenario.server.kind), kind);
        QCOMPARE(scenario.steam.setsCell, pcSetsCell);
    }

    void everyKeyOfTheServerArrives()
    {
        const ServerPlan plan = parsed(R"("streamingServer":{
        "headsets":[{"serial":"D3A","address":"10.0.0.1","joinsAt":1,"dropsAt":2,"returnsAt":3}],
        "linkDelay":0.25,"restartAt":30,"usb":true,"hello":true,"serialFirst":true,
        "deviceId":"D9","split":3,"join":2})")
                                    .server;
        QCOMPARE(plan.kind, ServerPlan::Program);
        QCOMPARE(plan.headsets.size(), size_t(1));
        QCOMPARE(
            plan.arguments(0),
            QStringList({"--headset", "D3A=10.0.0.1@1", "--drop", "D3A@2", "--return", "D3A@3",
                         "--link-delay", "0.25", "--restart-at", "30", "--usb", "--hello",
                         "--serial-first", "--device-id", "D9", "--split", "3", "--join", "2"}));
        QVERIFY(parsed(R"("streamingServer":{"headsets":[]})").server.headsets.empty());
    }

    void theCommandLineSaysAllThatDiffersFromTheDefault()
    {
        QCOMPARE(parsed("").server.arguments(0),
                 QStringList({"--headset", "D3SIM00001=192.168.1.31@0", "--link-delay", "0.5"}));
    }

    void aLaterStartHearsOnlyOfWhatIsStillToCome_data()
    {
        QTest::addColumn<int>("elapsed");
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("first start")
            << 0 << QStringList{"--headset", "A=1@5", "--drop", "A@20", "--return",     "A@30",
                                "--headset", "B=2@0", "--drop", "B@25", "--restart-at", "10"};
        QTest::newRow("before the headset joins")
            << 4000 << QStringList{"--headset", "A=1@1", "--drop", "A@16", "--return",     "A@26",
                                   "--headset", "B=2@0", "--drop", "B@21", "--restart-at", "6"};
        QTest::newRow("after the restart")
            << 10001 << QStringList{"--headset", "A=1@0",     "--drop", "A@9.999", "--return",
                                    "A@19.999",  "--headset", "B=2@0",  "--drop",  "B@14.999"};
        QTest::newRow("as one drops")
            << 20000 << QStringList{"--headset", "A=1@10", "--headset", "B=2@0", "--drop", "B@5"};
        QTest::newRow("while one is away")
            << 21000 << QStringList{"--headset", "A=1@9", "--headset", "B=2@0", "--drop", "B@4"};
        QTest::newRow("after all") << 31000 << QStringList{"--headset", "A=1@0"};
    }
    void aLaterStartHearsOnlyOfWhatIsStillToCome()
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
};

KOLM_TEST_MAIN(ScenarioServerTest)
#include "tst_scenario_server.moc"
