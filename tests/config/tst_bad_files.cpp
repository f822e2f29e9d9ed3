#include "base/json_document.h"
#include "config/config_manager.h"
#include "config/device_settings.h"
#include "config/recent_headsets.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString kPaths = QStringLiteral("AppData/Local/openvr/openvrpaths.vrpath");

bool parses(const QByteArray &content)
{
    return parseJson(content).ok();
}

} // namespace

// As which file some content is read.
enum class As {
    Settings,
    Session,
    OpenvrPaths,
};
Q_DECLARE_METATYPE(As)

// Whatever is in the files, nothing crashes, and what comes out is whole.
class TestBadFiles : public TestCase
{
    Q_OBJECT

private slots:
    void anyContentInAnyFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        const auto add = [](const char *name, const QByteArray &content) {
            QTest::newRow(name) << content;
        };
        add("empty", "");
        add("a blank", " ");
        add("an empty object", "{}");
        add("an empty list", "[]");
        add("a list of objects", R"([{"D1":{},"sessionSettings":{},"external_drivers":["C:/a"]}])");
        add("null", "null");
        add("a number", "12345678901234567890");
        add("a text", "\"text\"");
        add("null bytes", QByteArray(100, '\0'));
        add("a null byte behind the end", QByteArray("{}\0", 3));
        add("a null byte in a text", QByteArray("{\"lastSn\":\"D3\0x\"}", 17));
        add("an escaped null byte", R"({"lastSn":"D2\u0000x","runtime":["C:/\u0000"]})");
        add("invalid UTF-8", "{\"lastSn\":\"\xc3\x28\xff\"}");
        add("half a surrogate pair", R"({"lastSn":"\ud83d","D1":{"\udc53":"\udc53\ud83d"}})");
        add("a byte order mark", "\xef\xbb\xbf{\"lastSn\":\"D2\"}");
        add("two byte order marks", "\xef\xbb\xbf\xef\xbb\xbf{}");
        add("UTF-16", QByteArray("\xff\xfe{\0}\0", 6));
        add("cut off", R"({"sessionSettings":{"video":{"preferredFps")");
        add("trailing rubbish", "{} {}");
        add("a comment", "{} // comment");
        add("the same member twice", R"({"D1":{"fps":"72"},"D1":7,"sessionSettings":1,
                                    "sessionSettings":{"headset":{}}})");
        add("long numbers everywhere", R"({"D1":{"fps":12345678901234567890,"scale":1e999,
        "definitionIndex":1e400,"codec":12345678901234567890},"lastSn":12345678901234567890,
        "wiredOrWireless":12345678901234567890,"sessionSettings":12345678901234567890,
        "runtime":[12345678901234567890],"external_drivers":12345678901234567890,
        "clientConnections":12345678901234567890})");
        add("nested as deep as it may be",
            "{\"sessionSettings\":" + QByteArray("{\"video\":").repeated(900) + "1e400" +
                QByteArray(900, '}') + "}");
        add("nested too deep", QByteArray("{\"sessionSettings\":").repeated(100000));
        add("deep lists", QByteArray(1000000, '['));
        add("binary JSON of Qt", QByteArray("qbjs\1\0\0\0\xff\xff\xff\xff\xff\xff\xff\xff", 16));
        add("separators", QByteArray(100000, ';'));
        add("a script", "#!/bin/sh\nrm -rf /nowhere\n");
        add("a picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
    }

    void anyContentInAnyFile()
    {
        QFETCH(QByteArray, content);

        useAsEveryFile(content);
    }

    void anyTypeOfAnyMember_data()
    {
        QTest::addColumn<As>("as");
        QTest::addColumn<QByteArray>("pattern");
        const auto add = [](As as, const char *pattern) {
            QTest::newRow(pattern) << as << QByteArray(pattern);
        };
        add(As::Settings, R"({"D1":%})");
        add(As::Settings,
            R"({"D2":{"definitionIndex":%,"customize":%,"fps":%,"codec":%,"scale":%}})");
        add(As::Settings, R"({"D3":{"audio":%,"10bitenc":%,"bitRate":%,"fullrange":%,"hdr":%}})");
        add(As::Settings, R"({"lastSn":%,"wiredOrWireless":%})");
        add(As::Session, R"({"clientConnections":%,"sessionSettings":{"headset":{}}})");
        add(As::Session, R"({"sessionSettings":%,"openvr_config":{}})");
        add(As::Session,
            R"({"sessionSettings":{"video":%,"audio":%,"headset":%},"openvr_config":%})");
        add(As::Session,
            R"({"sessionSettings":{"video":{"preferredFps":%},"headset":{"serialNumber":%}}})");
        add(As::Session, R"({"sessionSettings":{"audio":{"microphone":%}}})");
        add(As::Session,
            R"({"sessionSettings":{"audio":{"microphone":{"enabled":%,"content":%}}}})");
        add(As::Session, R"({"sessionSettings":{"audio":{"microphone":{"content":
            {"content":%,"inputDeviceId":%,"outputDeviceId":%}}}}})");
        add(As::OpenvrPaths, R"({"runtime":%,"external_drivers":%})");
        add(As::OpenvrPaths, R"({"runtime":[%],"external_drivers":[%]})");
    }

    void anyTypeOfAnyMember()
    {
        QFETCH(As, as);
        QFETCH(QByteArray, pattern);
        for (const char *value :
             {"null", "true", "false", "0", "-1", "3", "2147483648", "1.5", "1e400",
              "12345678901234567890", "\"\"", "\"72\"", "\"D2\"", "[]", "[{}]", "[[[]]]", "{}",
              R"({"content":null,"name":[]})", R"({"":{"":{}}})"}) {
            useAs(as, QByteArray(pattern).replace('%', value));
            if (QTest::currentTestFailed())
                QFAIL(value);
        }
    }

    void aHugeFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("50 MB of rubbish") << QByteArray(50000000, 'x');
        const QByteArray text(20000000, 'x');
        QTest::newRow("a text of 20 MB")
            << "{\"D1\":{\"x\":\"" + text + "\"},\"sessionSettings\":{}}";
        QByteArray list = "{\"runtime\":[";
        for (int i = 0; i < 100000; ++i)
            list += "\"C:/dir\",18446744073709551615,";
        QTest::newRow("many members") << list + "0],\"sessionSettings\":{}}";
    }

    void aHugeFile()
    {
        QFETCH(QByteArray, content);

        useAsEveryFile(content);
    }

private:
    void useAsEveryFile(const QByteArray &content)
    {
        const bool isJson = parses(content);
        useAsSettings(content, isJson);
        useAsRecentHeadsets(content);
        useAsSession(content, isJson);
        useAsOpenvrPaths(content, isJson);
    }

    void useAs(As as, const QByteArray &json)
    {
        switch (as) {
        case As::Settings:
            return useAsSettings(json, true);
        case As::Session:
            return useAsSession(json, true);
        case As::OpenvrPaths:
            return useAsOpenvrPaths(json, true);
        }
    }

    void useAsSettings(const QByteArray &content, bool isJson)
    {
        writeFile("set.json", content);
        ConfigManager config(dir(), [] { return true; });

        config.loadDeviceSettings(false, 0);
        // Deleted when it was broken, and left alone otherwise.
        QCOMPARE(QFile::exists(path("set.json")), isJson);
        for (int model = 1; model <= 3; ++model) {
            const QJsonObject object = config.loadDeviceSettings(true, model);
            for (const QString &key : device_settings::fresh().keys())
                QVERIFY2(object.contains(key), qPrintable(key));
        }
        config.definitionIndex();
        config.fpsIndex();
        QVERIFY(config.encodeIndex() >= 0 && config.encodeIndex() <= 3);
        QVERIFY(config.width() == 1600 || config.width() == 2880);
        config.setBitRate(1, true, 0);
        config.setDeviceSn(config.serial().startsWith("D2") ? "D3-x" : "D2-x");
        config.saveDeviceSettings(QString());

        const QByteArray saved = readFile("set.json");
        QVERIFY(parses(saved));
        // Our own file is one that we load as we saved it.
        ConfigManager next(dir(), [] { return true; });
        next.loadDeviceSettings(false, 0);
        next.saveDeviceSettings(QString());
        QVERIFY(readFile("set.json") == saved);
    }

    void useAsRecentHeadsets(const QByteArray &content)
    {
        writeFile("setting.inf", content);

        const QStringList serials = recent_headsets::load(dir());
        QVERIFY(!serials.contains(QString()));
        QCOMPARE(recent_headsets::save(dir(), serials), WriteResult::Ok);
        // But for a byte order mark, what is loaded is what was saved.
        const QStringList again = recent_headsets::load(dir());
        QVERIFY(again == serials || content.startsWith("\xef\xbb\xbf"));
        QCOMPARE(recent_headsets::save(dir(), again), WriteResult::Ok);
        QVERIFY(recent_headsets::load(dir()) == again);
    }

    void useAsSession(const QByteArray &content, bool isJson)
    {
        QVERIFY(QDir().mkpath(path("store")));
        ConfigManager config(path("store"), [] { return true; });
        config.loadDeviceSettings(false, 0);
        for (int edit = 0; edit < 2; ++edit) {
            writeFile("session.json", content);
            if (edit == 0)
                config.applyStreamingSettings(1, 1, 1, true, false, false, false, false);
            else
                config.writeSessionSerial();
            QCOMPARE(QFile::exists(path("session.json")), isJson);
            QVERIFY(!isJson || parses(readFile("session.json")));
        }
    }

    void useAsOpenvrPaths(const QByteArray &content, bool isJson)
    {
        const ConfigManager config(QString(), nullptr);
        QVERIFY(QDir(dir()).mkpath("AppData/Local/openvr"));
        writeFile(kPaths, content);

        config.hasExternalDrivers(dir());
        config.clearExternalDrivers(dir());
        QVERIFY(isJson ? parses(readFile(kPaths)) : readFile(kPaths) == content);
        QVERIFY(!isJson || !config.hasExternalDrivers(dir()));

        writeFile(kPaths, content);
        QString runtime = "before";
        const bool isList = isJson && parseJson(content).document.isArray();
        if (isList)
            announce("vrpath is no object, left as it is:" + path(kPaths));
        const bool isTaken = isJson && !isList;
        QCOMPARE(config.setExternalDrivers("C:/d", dir(), &runtime), isTaken);
        QVERIFY(isTaken ? parses(readFile(kPaths)) : readFile(kPaths) == content);
        QCOMPARE(config.hasExternalDrivers(dir()), isTaken);
        QVERIFY(!runtime.contains("@number"));
    }
};

KOLM_TEST_MAIN(TestBadFiles)
#include "tst_bad_files.moc"
