#include "config/config_manager.h"
#include "config/session_file.h"
#include "tests/base/denied_access.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

namespace {

// JSON in which the names of the cable's ends are "%in" and "%out".
QJsonObject object(QByteArray json)
{
    json.replace("%in", "CABLE Input (VB-Audio Virtual Cable)");
    json.replace("%out", "CABLE Output (VB-Audio Virtual Cable)");
    QJsonParseError error;
    const QJsonObject result = QJsonDocument::fromJson(json, &error).object();
    if (error.error != QJsonParseError::NoError)
        qFatal("test data is no JSON: %s", json.constData());
    return result;
}

// What no edit may touch: long numbers, odd names, deep members.
const char *const kForeign = R"("id":18446744073709551615,"ratio":0.30000000000000004,
    "openvr_config":{"eye_resolution_width":1600,"refresh_rate":60,"seconds_from_vsync":0.005},
    "":"no name","中文":["é",null,{"x":[]}],"big":123456789012345678901234567890)";

} // namespace

class TestSessionFile : public TestCase
{
    Q_OBJECT

private slots:
    // The tree, settings
    void theSettingsEdit_data()
    {
        QTest::addColumn<bool>("audio");
        QTest::addColumn<bool>("cable");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const auto add = [](const char *name, bool audio, bool cable, const char *before,
                            const char *after) {
            QTest::newRow(name) << audio << cable << QByteArray(before) << QByteArray(after);
        };
        const auto same = [&](const char *name, const char *json) {
            add(name, true, true, json, json);
        };

        same("nothing", R"({})");
        same("no settings", R"({"openvr_config":{"refresh_rate":60},"video":{},"audio":{}})");
        same("settings null", R"({"sessionSettings":null,"openvr_config":{"refresh_rate":60}})");
        same("settings a text", R"({"sessionSettings":"text"})");
        same("settings a list", R"({"sessionSettings":[{"video":{}}]})");
        same("settings empty", R"({"sessionSettings":{}})");
        same("no video, but a refresh rate",
             R"({"sessionSettings":{"x":1},"openvr_config":{"refresh_rate":60}})");
        same("video a number",
             R"({"sessionSettings":{"video":7},"openvr_config":{"refresh_rate":60}})");
        same("video null",
             R"({"sessionSettings":{"video":null},"openvr_config":{"refresh_rate":60}})");
        same("audio a number", R"({"sessionSettings":{"audio":7}})");
        same("audio without a microphone",
             R"({"sessionSettings":{"audio":{"gameAudio":{"x":1}}}})");
        same("microphone null", R"({"sessionSettings":{"audio":{"microphone":null}}})");

        add("video", false, false, R"({"sessionSettings":{"video":{}}})",
            R"({"sessionSettings":{"video":{"preferredFps":90}}})");
        add("video with other members", false, false,
            R"({"sessionSettings":{"video":{"preferredFps":72,"codec":{"x":"HEVC"}},"z":0},"a":1})",
            R"({"sessionSettings":{"video":{"preferredFps":90,"codec":{"x":"HEVC"}},"z":0},"a":1})");
        add("a frame rate that was a text", false, false,
            R"({"sessionSettings":{"video":{"preferredFps":"72"}}})",
            R"({"sessionSettings":{"video":{"preferredFps":90}}})");
        add("video and refresh rate", false, false,
            R"({"sessionSettings":{"video":{}},"openvr_config":{"refresh_rate":60,"x":1}})",
            R"({"sessionSettings":{"video":{"preferredFps":90}},
            "openvr_config":{"refresh_rate":90,"x":1}})");
        add("video and an empty OpenVR object", false, false,
            R"({"sessionSettings":{"video":{}},"openvr_config":{}})",
            R"({"sessionSettings":{"video":{"preferredFps":90}},"openvr_config":{"refresh_rate":90}})");
        add("video and OpenVR null", false, false,
            R"({"sessionSettings":{"video":{}},"openvr_config":null})",
            R"({"sessionSettings":{"video":{"preferredFps":90}},"openvr_config":null})");
        add("an OpenVR object inside the settings", false, false,
            R"({"sessionSettings":{"video":{},"openvr_config":{}}})",
            R"({"sessionSettings":{"video":{"preferredFps":90},"openvr_config":{}}})");

        const char *const devices =
            R"({"sessionSettings":{"audio":{"microphone":{"enabled":%1,"content":{
            "inputDeviceId":{"name":"in","index":1},"outputDeviceId":{"name":"out","index":2},
            "gain":3}},"gameAudio":{"y":2}}}})";
        const QByteArray on = QByteArray(devices).replace("%1", "true");
        const QByteArray off = QByteArray(devices).replace("%1", "false");
        add("audio off", false, true, on, off);
        add("audio on without the cable", true, false, off, on);
        add("audio on with the cable", true, true, off,
            R"({"sessionSettings":{"audio":{"microphone":{"enabled":true,"content":{
            "content":null,
            "inputDeviceId":{"name":"%in"},
            "outputDeviceId":{"name":"%out","index":2},
            "gain":3}},"gameAudio":{"y":2}}}})");
        add("the inner content object becomes the input device", true, true,
            R"({"sessionSettings":{"audio":{"microphone":{"content":{
            "content":{"name":"old","k":5},"inputDeviceId":{"index":1}}}}}})",
            R"({"sessionSettings":{"audio":{"microphone":{"enabled":true,"content":{
            "content":{"name":"old","k":5},
            "inputDeviceId":{"name":"%in","k":5},
            "outputDeviceId":{"name":"%out"}}}}}})");
        add("an inner content that is no object stays", true, true,
            R"({"sessionSettings":{"audio":{"microphone":{"content":{
            "content":"text","outputDeviceId":7}}}}})",
            R"({"sessionSettings":{"audio":{"microphone":{"enabled":true,"content":{
            "content":"text",
            "inputDeviceId":{"name":"%in"},
            "outputDeviceId":{"name":"%out"}}}}}})");
        add("a microphone without content gets one", true, true,
            R"({"sessionSettings":{"audio":{"microphone":{}}}})",
            R"({"sessionSettings":{"audio":{"microphone":{"enabled":true,"content":{
            "content":null,
            "inputDeviceId":{"name":"%in"},
            "outputDeviceId":{"name":"%out"}}}}}})");
        add("a microphone without content, and no cable", true, false,
            R"({"sessionSettings":{"audio":{"microphone":{}}}})",
            R"({"sessionSettings":{"audio":{"microphone":{"enabled":true}}}})");
        add("video, refresh rate and microphone", false, true,
            R"({"sessionSettings":{"video":{},"audio":{"microphone":{}}},"openvr_config":{}})",
            R"({"sessionSettings":{"video":{"preferredFps":90},
            "audio":{"microphone":{"enabled":false}}},"openvr_config":{"refresh_rate":90}})");
    }

    void theSettingsEdit()
    {
        QFETCH(bool, audio);
        QFETCH(bool, cable);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        const auto probe = [&] { return cable; };

        const QJsonObject edited = session_file::withStreaming(object(before), 90.0, audio, probe);

        QCOMPARE(edited, object(after));
        // Once more changes nothing more.
        QCOMPARE(session_file::withStreaming(edited, 90.0, audio, probe), edited);
    }

    void theCableIsAskedForOnlyWhenItMatters_data()
    {
        QTest::addColumn<bool>("audio");
        QTest::addColumn<QByteArray>("session");
        QTest::addColumn<int>("asked");
        const QByteArray whole = R"({"sessionSettings":{"audio":{"microphone":{}}}})";
        QTest::newRow("audio on") << true << whole << 1;
        QTest::newRow("audio off") << false << whole << 0;
        QTest::newRow("no microphone")
            << true << QByteArray(R"({"sessionSettings":{"audio":{}}})") << 0;
        QTest::newRow("no settings") << true << QByteArray("{}") << 0;
    }

    void theCableIsAskedForOnlyWhenItMatters()
    {
        QFETCH(bool, audio);
        QFETCH(QByteArray, session);
        int asked = 0;

        const auto probe = [&] { return ++asked > 0; };
        static_cast<void>(session_file::withStreaming(object(session), 72.0, audio, probe));

        QTEST(asked, "asked");
    }

    // The tree, serial
    void theSerialEdit_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after"); // empty: nothing to write
        const auto add = [](const char *name, const char *before, const char *after) {
            QTest::newRow(name) << QByteArray(before) << QByteArray(after);
        };
        add("nothing", R"({})", "");
        add("no settings", R"({"headset":{"serialNumber":"x"},"clientConnections":{}})", "");
        add("settings null", R"({"sessionSettings":null})", "");
        add("settings a text", R"({"sessionSettings":"text"})", "");
        add("settings without a headset", R"({"sessionSettings":{"x":1}})",
            R"({"sessionSettings":{"x":1}})");
        add("headset null", R"({"sessionSettings":{"headset":null}})",
            R"({"sessionSettings":{"headset":null}})");
        add("headset", R"({"sessionSettings":{"headset":{}}})",
            R"({"sessionSettings":{"headset":{"serialNumber":"D3-7"}}})");
        add("headset with other members",
            R"({"sessionSettings":{"headset":{"serialNumber":5,"mode":"x"},"video":{}},"a":[1]})",
            R"({"sessionSettings":{"headset":{"serialNumber":"D3-7","mode":"x"},"video":{}},"a":[1]})");
        add("no clients", R"({"clientConnections":{},"sessionSettings":{"headset":{}}})",
            R"({"clientConnections":{},"sessionSettings":{"headset":{"serialNumber":"D3-7"}}})");
        add("clients", R"({"clientConnections":{"a.b":{"ip":1}},"sessionSettings":{"headset":{}}})",
            R"({"clientConnections":{},"sessionSettings":{"headset":{}}})");
        add("clients, but no settings", R"({"clientConnections":{"a":null}})",
            R"({"clientConnections":{}})");
        add("clients null", R"({"clientConnections":null,"sessionSettings":{"headset":{}}})",
            R"({"clientConnections":null,"sessionSettings":{"headset":{"serialNumber":"D3-7"}}})");
        add("clients a list", R"({"clientConnections":[1],"sessionSettings":{"headset":{}}})",
            R"({"clientConnections":[1],"sessionSettings":{"headset":{"serialNumber":"D3-7"}}})");
    }

    void theSerialEdit()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);

        const std::optional<QJsonObject> edited = session_file::withSerial(object(before), "D3-7");

        QCOMPARE(edited.has_value(), !after.isEmpty());
        if (edited)
            QCOMPARE(*edited, object(after));
    }

    // The file, settings
    void applyingSettingsLogsStoresSavesAndEdits()
    {
        writeFile("session.json", R"({"sessionSettings":{"video":{},"audio":{"microphone":{}}},
                                 "openvr_config":{}})");
        ConfigManager config = manager(true);

        config.applyStreamingSettings(0, 0, 0, true, true, false, true, true);

        QCOMPARE(logged(), QStringList({"definition: 0 fps: 0  encode: 0 audio: 1 wired: 1",
                                        "scale: 0.8 fps 0 "}));
        const QJsonObject saved = object(readFile("data/set.json"));
        const QJsonObject expected{
            {"fps", "72"},       {"bitRate", "50"},      {"bitRate_wired", "20"},
            {"scale", "80"},     {"audio", true},        {"customize", false},
            {"codec", "H264"},   {"definitionIndex", 0}, {"fullrange", true},
            {"10bitenc", false}, {"hdr", true}};
        QCOMPARE(saved["D3"].toObject(), expected);
        QCOMPARE(config.deviceObject("D3"), expected);
        QCOMPARE(saved["lastSn"], QJsonValue("D3"));
        QCOMPARE(saved["wiredOrWireless"], QJsonValue(1));
        const QJsonObject session = object(R"({"sessionSettings":{"video":{"preferredFps":72},
        "audio":{"microphone":{"enabled":true,"content":{"content":null,
        "inputDeviceId":{"name":"%in"},"outputDeviceId":{"name":"%out"}}}}},
        "openvr_config":{"refresh_rate":72}})");
        QCOMPARE(readFile("session.json"), QJsonDocument(session).toJson(QJsonDocument::Indented));
    }

    void theCableIsAskedOfWhoWasNamedLast()
    {
        const QByteArray before = R"({"sessionSettings":{"audio":{"microphone":{}}}})";
        for (const bool cable : {true, false}) {
            writeFile("session.json", before);
            ConfigManager config = manager(!cable);
            config.setCableProbe([cable] { return cable; });
            apply(config, true);
            QCOMPARE(readFile("session.json").contains("CABLE Input"), cable);
        }
    }

    void theSettingsAreSavedBeforeTheSessionIsEdited()
    {
        const QByteArray before = R"({"sessionSettings":{"video":{},"audio":{"microphone":{}}}})";
        writeFile("session.json", before);
        QString codecWhenAsked;
        QByteArray sessionWhenAsked;
        QDir().mkpath(path("data"));
        ConfigManager config(path("data"), [&] {
            codecWhenAsked = object(readFile("data/set.json"))["D3"].toObject()["codec"].toString();
            sessionWhenAsked = readFile("session.json");
            return true;
        });
        config.loadDeviceSettings(false, 0);

        config.applyStreamingSettings(1, 1, 3, true, false, false, false, false);

        QCOMPARE(codecWhenAsked, QString("AV01"));
        QCOMPARE(sessionWhenAsked, before);
    }

    void aMissingSessionIsLoggedAfterTheSettingsAreSaved()
    {
        ConfigManager config = manager();

        apply(config);

        QCOMPARE(logged(), QStringList({"definition: 1 fps: 1  encode: 1 audio: 0 wired: 0",
                                        "scale: 1 fps 1 ", "no session json: ./session.json"}));
        QVERIFY(QFile::exists(path("data/set.json")));
        QVERIFY(!QFile::exists(path("session.json")));
    }

    void theLogLinesOfApplying_data()
    {
        QTest::addColumn<int>("definitionIndex");
        QTest::addColumn<int>("fpsIndex");
        QTest::addColumn<int>("encodeIndex");
        QTest::addColumn<bool>("audio");
        QTest::addColumn<bool>("wired");
        QTest::addColumn<QString>("first");
        QTest::addColumn<QString>("second");
        QTest::newRow("high, HEVC")
            << 2 << 1 << 1 << false << false << "definition: 2 fps: 1  encode: 1 audio: 0 wired: 0"
            << "scale: 1.1 fps 1 ";
        QTest::newRow("smooth, H.264")
            << 0 << 0 << 0 << true << true << "definition: 0 fps: 0  encode: 0 audio: 1 wired: 1"
            << "scale: 0.8 fps 0 ";
        QTest::newRow("out of range") << -1 << -2 << 99 << false << true
                                      << "definition: -1 fps: -2  encode: 99 audio: 0 wired: 1"
                                      << "scale: 1 fps -2 ";
        QTest::newRow("custom") << 3 << 2 << 3 << false << false
                                << "definition: 3 fps: 2  encode: 3 audio: 0 wired: 0"
                                << "scale: 1.15 fps 2 ";
    }

    void theLogLinesOfApplying()
    {
        QFETCH(int, definitionIndex);
        QFETCH(int, fpsIndex);
        QFETCH(int, encodeIndex);
        QFETCH(bool, audio);
        QFETCH(bool, wired);
        QFETCH(QString, first);
        QFETCH(QString, second);
        ConfigManager config = manager();
        config.setCustomize(115, 44, true, 3);

        config.applyStreamingSettings(definitionIndex, fpsIndex, encodeIndex, audio, wired, false,
                                      false, false);

        QCOMPARE(logged(), QStringList({first, second, "no session json: ./session.json"}));
    }

    void theLinkIsRemembered()
    {
        ConfigManager config = manager();

        config.applyStreamingSettings(1, 1, 1, false, true, false, false, false);
        QCOMPARE(config.wiredOrWireless(), 1);
        QCOMPARE(object(readFile("data/set.json"))["wiredOrWireless"], QJsonValue(1));

        config.applyStreamingSettings(1, 1, 1, false, false, false, false, false);
        QCOMPARE(config.wiredOrWireless(), 2);
        QCOMPARE(object(readFile("data/set.json"))["wiredOrWireless"], QJsonValue(2));
    }

    void everythingElseInTheSessionSurvives()
    {
        const QByteArray foreign = kForeign;
        const QByteArray kept[] = {
            "\"id\": 18446744073709551615",
            "\"ratio\": 0.30000000000000004",
            "\"eye_resolution_width\": 1600",
            "\"seconds_from_vsync\": 0.005",
            "\"\": \"no name\"",
            "\"é\"",
            "\"big\": 123456789012345678901234567890",
        };
        ConfigManager config = manager();

        writeFile("session.json",
                  "{" + foreign + R"(,"sessionSettings":{"video":{},"headset":{}}})");
        apply(config);
        config.writeSessionSerial();

        for (const QByteArray &text : kept)
            QVERIFY2(readFile("session.json").contains(text), text);
        QJsonObject expected = object("{" + foreign + "}");
        QJsonObject openvr = expected["openvr_config"].toObject();
        openvr["refresh_rate"] = 90;
        expected["openvr_config"] = openvr;
        expected["sessionSettings"] = object(R"({"video":{"preferredFps":90},
                                            "headset":{"serialNumber":"D3"}})");
        QCOMPARE(session(), expected);
    }

    void aSessionWithoutSettingsIsRewrittenUnchanged_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("an empty object") << QByteArray("{}") << QByteArray("{\n}\n");
        QTest::newRow("other members") << QByteArray(R"({"a":{"b":1},"openvr_config":{}})")
                                       << QByteArray("{\n    \"a\": {\n        \"b\": 1\n    },\n"
                                                     "    \"openvr_config\": {\n    }\n}\n");
        QTest::newRow("a list") << QByteArray("[1,18446744073709551615]")
                                << QByteArray("[\n    1,\n    18446744073709551615\n]\n");
    }

    void aSessionWithoutSettingsIsRewrittenUnchanged()
    {
        QFETCH(QByteArray, before);
        writeFile("session.json", before);
        ConfigManager config = manager();

        apply(config, true);

        QTEST(readFile("session.json"), "after");
    }

    void aSessionThatIsNoJsonIsDeletedWhenSettingsAreApplied_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("cut off") << QByteArray(R"({"sessionSettings":{"video":{"preferredFps":9)");
        QTest::newRow("rubbish") << QByteArray("\0\1\2", 3);
        QTest::newRow("no JSON") << QByteArray("sessionSettings = {}");
    }

    void aSessionThatIsNoJsonIsDeletedWhenSettingsAreApplied()
    {
        QFETCH(QByteArray, text);
        writeFile("session.json", text);
        ConfigManager config = manager();

        apply(config);

        QCOMPARE(logged().mid(2), QStringList({"set session json parseError"}));
        QVERIFY(!QFile::exists(path("session.json")));
        QVERIFY(QFile::exists(path("data/set.json")));
    }

    // The file, serial
    void theSerialIsWritten()
    {
        writeFile("session.json",
                  R"({"sessionSettings":{"headset":{"serialNumber":"old","x":1}}})");
        ConfigManager config = manager();
        config.saveDeviceSettings("D2-5 é");

        config.writeSessionSerial();

        QCOMPARE(logged(), QStringList({"session path:" + dir() + "/session.json; sn: D2-5 é"}));
        QCOMPARE(readFile("session.json"),
                 QJsonDocument(object(R"({"sessionSettings":{"headset":{"serialNumber":"D2-5 é",
                                     "x":1}}})"))
                     .toJson(QJsonDocument::Indented));
    }

    void clientsAreForgottenBeforeTheSerialIsWritten()
    {
        writeFile("session.json", R"({"clientConnections":{"a":{"ip":1},"b":{}},
                                 "sessionSettings":{"headset":{"serialNumber":"old"}}})");
        ConfigManager config = manager();

        config.writeSessionSerial();
        QCOMPARE(session(), object(R"({"clientConnections":{},
                                  "sessionSettings":{"headset":{"serialNumber":"old"}}})"));

        config.writeSessionSerial();
        QCOMPARE(session(), object(R"({"clientConnections":{},
                                  "sessionSettings":{"headset":{"serialNumber":"D3"}}})"));
        QCOMPARE(logged(), QStringList({"session path:" + dir() + "/session.json; sn: D3",
                                        "session path:" + dir() + "/session.json; sn: D3"}));
    }

    void aMissingSessionIsNoMatterAtShutDown()
    {
        ConfigManager config = manager();

        config.writeSessionSerial();

        QCOMPARE(logged(), QStringList());
        QVERIFY(!QFile::exists(path("session.json")));
    }

    void aSessionWithoutSettingsIsNotWrittenAtShutDown_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("an empty object") << QByteArray("{}");
        QTest::newRow("other members") << QByteArray(R"({"headset":{},  "clientConnections":{}})");
        QTest::newRow("a list") << QByteArray("[ ]");
    }

    void aSessionWithoutSettingsIsNotWrittenAtShutDown()
    {
        QFETCH(QByteArray, text);
        writeFile("session.json", text);
        ConfigManager config = manager();

        config.writeSessionSerial();

        QCOMPARE(readFile("session.json"), text);
        QCOMPARE(logged(), QStringList({"session path:" + dir() + "/session.json; sn: D3"}));
    }

    void aSessionWithoutHeadsetIsRewrittenAtShutDown()
    {
        writeFile("session.json", R"({"sessionSettings":{}})");
        ConfigManager config = manager();

        config.writeSessionSerial();

        QCOMPARE(readFile("session.json"), QByteArray("{\n    \"sessionSettings\": {\n    }\n}\n"));
    }

    void aSessionThatIsNoJsonIsDeletedAtShutDown_data()
    {
        aSessionThatIsNoJsonIsDeletedWhenSettingsAreApplied_data();
    }

    void aSessionThatIsNoJsonIsDeletedAtShutDown()
    {
        QFETCH(QByteArray, text);
        writeFile("session.json", text);
        ConfigManager config = manager();

        config.writeSessionSerial();

        QCOMPARE(logged(), QStringList({"session path:" + dir() + "/session.json; sn: D3",
                                        "before session json parseError"}));
        QVERIFY(!QFile::exists(path("session.json")));
    }

    // Both
    void theWorkingDirectoryOfTheMomentCounts()
    {
        ConfigManager config = manager();
        QDir().mkpath(path("elsewhere"));
        writeFile("session.json", R"({"sessionSettings":{"headset":{}}})");
        writeFile("elsewhere/session.json", R"({"sessionSettings":{"headset":{}}})");
        const QByteArray before = readFile("session.json");

        QVERIFY(QDir::setCurrent(path("elsewhere")));
        config.writeSessionSerial();

        QCOMPARE(readFile("session.json"), before);
        QVERIFY(readFile("elsewhere/session.json").contains("\"D3\""));
    }

    void aReadOnlySessionIsLeftAlone()
    {
        for (const char *text : {R"({"sessionSettings":{"video":{},"headset":{}}})", "no JSON"}) {
            writeFile("session.json", text);
            const ReadOnlyFile obstacle(path("session.json"));
            if (!obstacle.works())
                QSKIP("This user may write every file.");
            ConfigManager config = manager();

            apply(config);
            config.writeSessionSerial();

            QCOMPARE(logged().size(), 2);
            QCOMPARE(logged().last(), QString("scale: 1 fps 1 "));
            QCOMPARE(readFile("session.json"), QByteArray(text));
        }
    }

    void aLockedSessionIsLeftAlone()
    {
        for (const char *text : {R"({"sessionSettings":{"video":{},"headset":{}}})", "no JSON"}) {
            writeFile("session.json", text);
            ConfigManager config = manager();
            {
                const LockedFile obstacle(path("session.json"));
                QVERIFY(obstacle.works());
                apply(config);
                config.writeSessionSerial();
            }
            QCOMPARE(logged().size(), 2);
            QCOMPARE(logged().last(), QString("scale: 1 fps 1 "));
            QCOMPARE(readFile("session.json"), QByteArray(text));
        }
    }

    void aFolderInItsPlaceIsLeftAlone()
    {
        QVERIFY(QDir(dir()).mkpath("session.json"));
        ConfigManager config = manager();

        apply(config);
        config.writeSessionSerial();

        QCOMPARE(logged().size(), 2);
        QVERIFY(QDir(path("session.json")).exists());
    }

private:
    // With its settings loaded from nowhere, in a folder of its own.
    ConfigManager manager(bool cable = false)
    {
        QDir().mkpath(path("data"));
        ConfigManager config(path("data"), [cable] { return cable; });
        config.loadDeviceSettings(false, 0);
        clearLog();
        return config;
    }
    void apply(ConfigManager &config, bool audio = false)
    {
        config.applyStreamingSettings(1, 1, 1, audio, false, false, false, false);
    }
    QJsonObject session() const
    {
        return QJsonDocument::fromJson(readFile("session.json")).object();
    }
};

KOLM_TEST_MAIN(TestSessionFile)
#include "tst_session_file.moc"
