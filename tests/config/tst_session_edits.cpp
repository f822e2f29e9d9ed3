#include "config/session_file.h"
#include "tests/config/session_fixture.h"

// The edits of the session's tree.
class TestSessionEdits : public TestCase
{
    Q_OBJECT

private slots:
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

        const QJsonObject edited =
            session_file::withStreaming(jsonWithCable(before), 90.0, audio, probe);

        QCOMPARE(edited, jsonWithCable(after));
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
        static_cast<void>(session_file::withStreaming(jsonObject(session), 72.0, audio, probe));

        QTEST(asked, "asked");
    }

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

        const std::optional<QJsonObject> edited =
            session_file::withSerial(jsonObject(before), "D3-7");

        QCOMPARE(edited.has_value(), !after.isEmpty());
        if (edited)
            QCOMPARE(*edited, jsonObject(after));
    }
};

KOLM_TEST_MAIN(TestSessionEdits)
#include "tst_session_edits.moc"
