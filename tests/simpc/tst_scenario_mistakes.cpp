#include "tests/simpc/scenario_text.h"
#include "tests/support/test_case.h"

class ScenarioMistakesTest : public TestCase
{
    Q_OBJECT

private slots:
    void mistakesAreToldPlainly_data()
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
        row("moment without time", R"("at":[{"acLine":"offline"}])",
            R"("at[0].seconds" is missing)");
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
        row("cable of numbers", R"("pc":{"usb":[1]})",
            R"("pc.usb" must be a text or a list of texts)");
        row("adb word", R"("adb":"genuine")", R"("adb" must be one of "sim", "none")");
        row("adb's flag", R"("adb":{"hangs":"yes"})", R"("adb.hangs" must be true or false)");
        row("strange choice", R"("at":[{"seconds":1,"personChooses":"bluetooth"}])",
            R"("at[0].personChooses" must be one of "usb", "wifi")");
        row("choice at the beginning", R"("pc":{"personChooses":"usb"})",
            R"("pc.personChooses" is not a key of a scenario)");
        row("file of a strange kind", R"("files":{"set.json":[1]})",
            R"("files.set.json" must be an object, a text or null)");
    }
    void mistakesAreToldPlainly()
    {
        QFETCH(QByteArray, members);
        QFETCH(QString, expected);
        QString error;
        parsed(members, &error);
        QCOMPARE(error, expected);
    }

    void theFirstMistakeIsTold()
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
};

KOLM_TEST_MAIN(ScenarioMistakesTest)
#include "tst_scenario_mistakes.moc"
