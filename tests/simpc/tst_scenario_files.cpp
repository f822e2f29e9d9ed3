#include "tests/simpc/scenario_text.h"
#include "tests/support/test_case.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

// Out of the class, where moc cannot read it.
const QByteArray files = R"("files":{
        "set.json":{"wiredOrWireless":1}, "setting.inf":"A;;B;", "session.json":"{ half",
        "openvrpaths.vrpath":null})";

} // namespace

class ScenarioFilesTest : public TestCase
{
    Q_OBJECT

private slots:
    void filesMayBeObjectsTextsOrAbsent()
    {
        const Scenario scenario = parsed(files);
        QCOMPARE(QJsonDocument::fromJson(fileOf(scenario, "set.json").content).object(),
                 QJsonObject({{"wiredOrWireless", 1}}));
        QCOMPARE(fileOf(scenario, "set.json").place, ScenarioFile::Home);
        QCOMPARE(fileOf(scenario, "setting.inf").content, QByteArray("A;;B;"));
        QCOMPARE(fileOf(scenario, "session.json").content, QByteArray("{ half"));
        QCOMPARE(fileOf(scenario, "session.json").place, ScenarioFile::Work);
        QVERIFY(!fileOf(scenario, "openvrpaths.vrpath").exists);
    }

    void theDefaultFilesHoldAModeADriverAndALongNumber()
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

    void longNumbersOfAScenarioReachTheFileUnchanged()
    {
        const Scenario scenario = parsed(R"("files":{"session.json":{"id":18446744073709551615}})");
        QCOMPARE(fileOf(scenario, "session.json").content,
                 QByteArray("{\n    \"id\": 18446744073709551615\n}\n"));
    }
};

KOLM_TEST_MAIN(ScenarioFilesTest)
#include "tst_scenario_files.moc"
