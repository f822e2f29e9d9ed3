#include "tests/base/denied_access.h"
#include "tests/config/session_fixture.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

namespace {

// What no edit may touch: long numbers, odd names, deep members.
const char *const foreignMembers = R"("id":18446744073709551615,"ratio":0.30000000000000004,
    "openvr_config":{"eye_resolution_width":1600,"refresh_rate":60,"seconds_from_vsync":0.005},
    "":"no name","中文":["é",null,{"x":[]}],"big":123456789012345678901234567890)";

} // namespace

// The session's file when settings are applied, and what keeps any edit from it.
class TestSessionFile : public SessionFixture
{
    Q_OBJECT

private slots:
    void applyingSettingsLogsStoresSavesAndEdits()
    {
        writeFile("session.json", R"({"sessionSettings":{"video":{},"audio":{"microphone":{}}},
                                 "openvr_config":{}})");
        ConfigManager config = manager(true);

        config.applyStreamingSettings(0, 0, 0, true, true, false, true, true);

        QCOMPARE(logged(), QStringList({"definition: 0 fps: 0  encode: 0 audio: 1 wired: 1",
                                        "scale: 0.8 fps 0 "}));
        const QJsonObject saved = readJson("data/set.json");
        const QJsonObject expected{
            {"fps", "72"},       {"bitRate", "50"},      {"bitRate_wired", "20"},
            {"scale", "80"},     {"audio", true},        {"customize", false},
            {"codec", "H264"},   {"definitionIndex", 0}, {"fullrange", true},
            {"10bitenc", false}, {"hdr", true}};
        QCOMPARE(saved["D3"].toObject(), expected);
        QCOMPARE(config.deviceObject("D3"), expected);
        QCOMPARE(saved["lastSn"], QJsonValue("D3"));
        QCOMPARE(saved["wiredOrWireless"], QJsonValue(1));
        const QJsonObject session =
            jsonWithCable(R"({"sessionSettings":{"video":{"preferredFps":72},
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
            codecWhenAsked = readJson("data/set.json")["D3"].toObject()["codec"].toString();
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
        QCOMPARE(readJson("data/set.json")["wiredOrWireless"], QJsonValue(1));

        config.applyStreamingSettings(1, 1, 1, false, false, false, false, false);
        QCOMPARE(config.wiredOrWireless(), 2);
        QCOMPARE(readJson("data/set.json")["wiredOrWireless"], QJsonValue(2));
    }

    void everythingElseInTheSessionSurvives()
    {
        const QByteArray foreign = foreignMembers;
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
        QJsonObject expected = jsonObject("{" + foreign + "}");
        QJsonObject openvr = expected["openvr_config"].toObject();
        openvr["refresh_rate"] = 90;
        expected["openvr_config"] = openvr;
        expected["sessionSettings"] = jsonObject(R"({"video":{"preferredFps":90},
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

    void aSessionThatIsNoJsonIsDeletedWhenSettingsAreApplied_data() { addTextsThatAreNoJson(); }

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
};

KOLM_TEST_MAIN(TestSessionFile)
#include "tst_session_file.moc"
