#include "config/config_manager.h"
#include "config/device_settings.h"
#include "tests/base/denied_access.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QStandardPaths>

namespace {

const QString kParseError = "setting json parseError";

QString codec(const QJsonObject &object)
{
    return object["codec"].toString();
}

} // namespace

class TestSettingsStore : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    // Loading
    void withoutAFileEveryModelIsFresh()
    {
        ConfigManager config = manager();

        QCOMPARE(config.loadDeviceSettings(true, 3), device_settings::fresh());
        QCOMPARE(config.loadDeviceSettings(true, 2), device_settings::fresh());
        QCOMPARE(config.loadDeviceSettings(true, 1), device_settings::fresh());
        QCOMPARE(config.serial(), QString("D3"));
        QCOMPARE(config.wiredOrWireless(), 0);
        QCOMPARE(logged(), QStringList({kParseError}));
    }

    void nothingIsWrittenUntilASave()
    {
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);
        config.setBitRate(80, true, 3);
        config.setWiredOrWireless(1);
        QVERIFY(QDir(dir()).isEmpty());

        config.saveDeviceSettings(QString());

        QCOMPARE(QDir(dir()).entryList(QDir::Files | QDir::Hidden), QStringList({"set.json"}));
    }

    void theModelsOfAFileAreLoaded()
    {
        writeThreeModels("D2-5");
        ConfigManager config = manager();

        QCOMPARE(codec(config.loadDeviceSettings(false, 0)), QString("codec of D2"));
        QCOMPARE(codec(config.loadDeviceSettings(true, 1)), QString("codec of D1"));
        QCOMPARE(codec(config.loadDeviceSettings(true, 3)), QString("codec of D3"));
        QCOMPARE(config.serial(), QString("D2-5"));
        QCOMPARE(config.wiredOrWireless(), 1);
        QCOMPARE(logged(), QStringList());
    }

    void theFileIsReadOnce()
    {
        writeThreeModels("D2-5");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        writeFile("set.json", "{}");

        QCOMPARE(codec(config.loadDeviceSettings(false, 0)), QString("codec of D2"));
        QCOMPARE(readFile("set.json"), QByteArray("{}"));
    }

    void aModelThatTheFileLacksIsFresh()
    {
        writeFile("set.json", R"({"D2":{"codec":"AV01"}})");
        ConfigManager config = manager();

        QCOMPARE(config.loadDeviceSettings(true, 3), device_settings::fresh());
        QCOMPARE(config.loadDeviceSettings(true, 1), device_settings::fresh());
        QCOMPARE(codec(config.loadDeviceSettings(true, 2)), QString("AV01"));
        QCOMPARE(logged(), QStringList());
    }

    void anIncompleteModelIsRepaired()
    {
        writeFile("set.json",
                  R"({"D1":{},"D2":{"customize":true},"D3":{"definitionIndex":0,"x":1}})");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        QJsonObject repaired = device_settings::fresh();
        repaired["scale"] = 100;
        QCOMPARE(config.deviceObject("D1"), repaired);
        repaired["customize"] = true;
        repaired["definitionIndex"] = 3;
        QCOMPARE(config.deviceObject("D2"), repaired);
        repaired["customize"] = false;
        repaired["definitionIndex"] = 0;
        repaired["bitRate"] = "20";
        repaired["bitRate_wired"] = "20";
        repaired["x"] = 1;
        QCOMPARE(config.deviceObject("D3"), repaired);
        QCOMPARE(logged(), QStringList());
    }

    void anEntryThatIsNoObjectIsRepairedToOne()
    {
        writeFile("set.json", R"({"D1":null,"D2":"text","D3":[1]})");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        QJsonObject repaired = device_settings::fresh();
        repaired["scale"] = 100;
        QCOMPARE(config.deviceObject("D1"), repaired);
        QCOMPARE(config.deviceObject("D2"), repaired);
        QCOMPARE(config.deviceObject("D3"), repaired);
    }

    void serialAndLinkOfAFileAreTakenOver_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("serial");
        QTest::addColumn<int>("link");
        QTest::newRow("none") << QByteArray("{}") << "D3" << 0;
        QTest::newRow("both") << QByteArray(R"({"lastSn":"D1X","wiredOrWireless":2})") << "D1X"
                              << 2;
        QTest::newRow("an empty serial") << QByteArray(R"({"lastSn":""})") << "" << 0;
        QTest::newRow("a number as serial") << QByteArray(R"({"lastSn":31})") << "" << 0;
        QTest::newRow("a long number as serial")
            << QByteArray(R"({"lastSn":18446744073709551615})") << "" << 0;
        QTest::newRow("Chinese") << QByteArray(R"({"lastSn":"D2中文"})") << QString("D2中文") << 0;
        QTest::newRow("a text as link") << QByteArray(R"({"wiredOrWireless":"1"})") << "D3" << 0;
        QTest::newRow("a fraction as link")
            << QByteArray(R"({"wiredOrWireless":1.5})") << "D3" << 0;
        QTest::newRow("1.0 as link") << QByteArray(R"({"wiredOrWireless":1.0})") << "D3" << 1;
        QTest::newRow("1e0 as link") << QByteArray(R"({"wiredOrWireless":1e0})") << "D3" << 1;
        QTest::newRow("another number as link")
            << QByteArray(R"({"wiredOrWireless":7})") << "D3" << 7;
    }

    void serialAndLinkOfAFileAreTakenOver()
    {
        QFETCH(QByteArray, text);
        writeFile("set.json", text);
        ConfigManager config = manager();

        config.loadDeviceSettings(false, 0);

        QTEST(config.serial(), "serial");
        QTEST(config.wiredOrWireless(), "link");
    }

    void aFileThatIsNoJsonIsDeleted_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("cut off") << QByteArray("{\"D1\":{\"codec\":\"H264\"},\"lastSn\":\"D2");
        QTest::newRow("rubbish") << QByteArray("\x01\x02\xff");
        QTest::newRow("a number") << QByteArray("17");
    }

    void aFileThatIsNoJsonIsDeleted()
    {
        QFETCH(QByteArray, text);
        writeFile("set.json", text);
        ConfigManager config = manager();

        QCOMPARE(config.loadDeviceSettings(true, 1), device_settings::fresh());

        QCOMPARE(config.deviceObject("D2"), device_settings::fresh());
        QCOMPARE(config.deviceObject("D3"), device_settings::fresh());
        QCOMPARE(config.serial(), QString("D3"));
        QCOMPARE(logged(), QStringList({kParseError}));
        QVERIFY(!QFile::exists(path("set.json")));
    }

    void aFileThatCannotBeOpenedIsLeftAlone()
    {
        writeThreeModels("D2-5");
        const QByteArray before = readFile("set.json");
        {
            const LockedFile obstacle(path("set.json"));
            QVERIFY(obstacle.works());
            ConfigManager config = manager();

            QCOMPARE(config.loadDeviceSettings(true, 1), device_settings::fresh());
            QCOMPARE(config.loadDeviceSettings(true, 2), device_settings::fresh());
            QCOMPARE(config.serial(), QString("D3"));
        }
        QCOMPARE(logged(), QStringList({kParseError}));
        QCOMPARE(readFile("set.json"), before);
    }

    // Choosing an object
    void theObjectLoadedByModel_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<QString>("expected");
        QTest::newRow("1") << 1 << "codec of D1";
        QTest::newRow("2") << 2 << "codec of D2";
        QTest::newRow("3") << 3 << "codec of D3";
        QTest::newRow("0") << 0 << "codec of D3";
        QTest::newRow("-1") << -1 << "codec of D3";
        QTest::newRow("4") << 4 << "codec of D3";
    }

    void theObjectLoadedByModel()
    {
        QFETCH(int, model);
        for (const char *serial : {"D1", "D2", "D3", "X9", ""}) {
            writeThreeModels(serial);
            ConfigManager config = manager();
            config.loadDeviceSettings(false, 0);

            QTEST(codec(config.loadDeviceSettings(true, model)), "expected");
        }
    }

    void theFirstLoadByModelHeedsTheSerialToo_data()
    {
        QTest::addColumn<QString>("serial");
        QTest::addColumn<int>("model");
        QTest::addColumn<QString>("expected");
        const auto add = [](const char *serial, int model, const char *expected) {
            QTest::newRow(QByteArray("'") + serial + "', model " + QByteArray::number(model))
                << QString(serial) << model << QString("codec of ") + expected;
        };
        for (const int model : {0, 1, 2, 3, 4})
            add("D2-5", model, "D2");
        for (const char *serial : {"D1", "D3", "X9", ""})
            add(serial, 2, "D2");
        for (const char *serial : {"D1", "D3", "X9", ""})
            add(serial, 1, "D1");
        add("D1", 3, "D1");
        add("D1", 0, "D1");
        add("D3", 3, "D3");
        add("D3", 0, "D3");
        add("X9", 3, "D3");
        add("X9", 0, "D1");
        add("", 3, "D3");
        add("", 0, "D1");
    }

    void theFirstLoadByModelHeedsTheSerialToo()
    {
        QFETCH(QString, serial);
        QFETCH(int, model);
        writeThreeModels(serial);
        ConfigManager config = manager();

        QTEST(codec(config.loadDeviceSettings(true, model)), "expected");
    }

    void theObjectLoadedBySerial_data()
    {
        QTest::addColumn<QString>("serial");
        QTest::addColumn<QString>("expected");
        QTest::newRow("D1") << "D1-7"
                            << "codec of D1";
        QTest::newRow("D2") << "D2-7"
                            << "codec of D2";
        QTest::newRow("D3") << "D3-7"
                            << "codec of D3";
        QTest::newRow("unknown") << "X9"
                                 << "codec of D1";
        QTest::newRow("lower case") << "d2"
                                    << "codec of D1";
        QTest::newRow("empty") << ""
                               << "codec of D1";
    }

    void theObjectLoadedBySerial()
    {
        QFETCH(QString, serial);
        writeThreeModels(serial);
        ConfigManager config = manager();

        // The model is of no account, neither at the first nor at a later load.
        QTEST(codec(config.loadDeviceSettings(false, 2)), "expected");
        QTEST(codec(config.loadDeviceSettings(false, 2)), "expected");
    }

    void whatIsLoadedIsACopy()
    {
        ConfigManager config = manager();
        QJsonObject copy = config.loadDeviceSettings(true, 3);

        copy["codec"] = "changed";

        QCOMPARE(config.loadDeviceSettings(true, 3), device_settings::fresh());
    }

    void theObjectOfASerial_data()
    {
        QTest::addColumn<QString>("serial");
        QTest::addColumn<QString>("expected");
        QTest::newRow("empty") << ""
                               << "codec of D3";
        QTest::newRow("D3") << "D3-1"
                            << "codec of D3";
        QTest::newRow("D2") << "D2-1"
                            << "codec of D2";
        QTest::newRow("D1") << "D1-1"
                            << "codec of D1";
        QTest::newRow("unknown") << "X9"
                                 << "codec of D1";
    }

    void theObjectOfASerial()
    {
        QFETCH(QString, serial);
        QFETCH(QString, expected);
        writeThreeModels("D3");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        QCOMPARE(codec(config.deviceObject(serial)), expected);
        config.deviceObject(serial)["codec"] = "changed";
        QCOMPARE(codec(config.loadDeviceSettings(true, expected.right(1).toInt())),
                 QString("changed"));
    }

    // Saving
    void aSavedStoreIsReadBack()
    {
        {
            ConfigManager config = manager();
            config.loadDeviceSettings(false, 0);
            config.setBitRate(80, true, 2);
            config.setCustomize(115, 33, false, 1);
            config.setWiredOrWireless(2);
            config.saveDeviceSettings("D2-9");
        }
        ConfigManager config = manager();
        clearLog();

        QCOMPARE(config.loadDeviceSettings(false, 0)["bitRate_wired"], QJsonValue("80"));
        const QJsonObject d1 = config.loadDeviceSettings(true, 1);
        QCOMPARE(d1["scale"], QJsonValue("115"));
        QCOMPARE(d1["bitRate"], QJsonValue("33"));
        QCOMPARE(config.serial(), QString("D2-9"));
        QCOMPARE(config.wiredOrWireless(), 2);
        QCOMPARE(logged(), QStringList());
    }

    void theSavedFileIsIndentedAndHoldsOnlyKnownMembers()
    {
        writeFile("set.json", R"({"D1":{"new":1},"D4":{},"version":7,"lastSn":"D1"})");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        config.saveDeviceSettings(QString());

        QJsonObject d1 = device_settings::fresh();
        d1["scale"] = 100;
        d1["new"] = 1;
        const QJsonObject expected{{"D1", d1},
                                   {"D2", device_settings::fresh()},
                                   {"D3", device_settings::fresh()},
                                   {"lastSn", "D1"},
                                   {"wiredOrWireless", 0}};
        QCOMPARE(readFile("set.json"), QJsonDocument(expected).toJson(QJsonDocument::Indented));
    }

    void emptyModelsAreNotSaved()
    {
        ConfigManager config = manager();
        config.setBitRate(80, false, 2);

        config.saveDeviceSettings(QString());

        QCOMPARE(saved(), QJsonObject({{"D2", QJsonObject{{"bitRate", "80"}}},
                                       {"lastSn", "D3"},
                                       {"wiredOrWireless", 0}}));
    }

    void savingWithASerialMakesItTheLast()
    {
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);
        QCOMPARE(config.width(), 2880);

        config.saveDeviceSettings("D2-1");

        QCOMPARE(saved()["lastSn"], QJsonValue("D2-1"));
        QCOMPARE(config.serial(), QString("D2-1"));
        QCOMPARE(config.width(), 1600);
        QCOMPARE(config.height(), 1600);
    }

    void savingWithAnEmptySerialKeepsTheLast()
    {
        writeThreeModels("D1-4");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        config.saveDeviceSettings(QString());

        QCOMPARE(saved()["lastSn"], QJsonValue("D1-4"));
        QCOMPARE(config.serial(), QString("D1-4"));
    }

    void aLongNumberInAModelSurvives()
    {
        writeFile("set.json", R"({"D2":{"id":18446744073709551615}})");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        config.saveDeviceSettings(QString());
        config.saveDeviceSettings(QString());

        QVERIFY(readFile("set.json").contains("\"id\": 18446744073709551615,"));
    }

    void savingWithoutTheFolderFailsSilently()
    {
        ConfigManager config(path("missing"), [] { return false; });
        config.loadDeviceSettings(false, 0);
        clearLog();

        config.saveDeviceSettings("D2");

        QCOMPARE(config.serial(), QString("D2"));
        QCOMPARE(logged(), QStringList());
        QVERIFY(QDir(dir()).isEmpty());
    }

    void savingOverAFolderFailsSilently()
    {
        QVERIFY(QDir(dir()).mkpath("set.json/inside"));
        ConfigManager config = manager();
        QCOMPARE(config.loadDeviceSettings(true, 3), device_settings::fresh());
        QCOMPARE(logged(), QStringList({kParseError}));

        config.saveDeviceSettings("D2");

        QCOMPARE(logged(), QStringList({kParseError}));
        QCOMPARE(QDir(dir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList({"set.json"}));
        QVERIFY(QDir(path("set.json/inside")).exists());
    }

    void savingOverAReadOnlyFileFailsSilently()
    {
        writeThreeModels("D1-4");
        const QByteArray before = readFile("set.json");
        const ReadOnlyFile obstacle(path("set.json"));
        if (!obstacle.works())
            QSKIP("This user may write every file.");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        config.saveDeviceSettings("D2");

        QCOMPARE(config.serial(), QString("D2"));
        QCOMPARE(logged(), QStringList());
        QCOMPARE(readFile("set.json"), before);
    }

    // Reads
    void theGettersReadTheCurrentModel()
    {
        writeFile("set.json", R"({
        "D1":{"definitionIndex":2,"fps":"72","codec":"HEVC","10bitenc":true,"audio":true},
        "D2":{"definitionIndex":0,"fps":"90","codec":"H264","fullrange":true,"hdr":true},
        "lastSn":"D1"})");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        QCOMPARE(config.definitionIndex(), 2);
        QCOMPARE(config.fpsIndex(), 0);
        QCOMPARE(config.encodeIndex(), 2);
        QVERIFY(config.audio());
        QVERIFY(config.tenBit());
        QVERIFY(!config.fullRange());
        QVERIFY(!config.hdr());

        config.saveDeviceSettings("D2");
        QCOMPARE(config.definitionIndex(), 0);
        QCOMPARE(config.fpsIndex(), 1);
        QCOMPARE(config.encodeIndex(), 0);
        QVERIFY(!config.audio());
        QVERIFY(!config.tenBit());
        QVERIFY(config.fullRange());
        QVERIFY(config.hdr());
    }

    void theGettersLogValueAndSerial()
    {
        writeFile("set.json", R"({"D3":{"fps":"72","codec":"AV01"},"lastSn":"D3-77 é"})");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);
        QCOMPARE(logged(), QStringList());

        config.definitionIndex();
        config.fpsIndex();
        config.encodeIndex();
        config.width();
        config.height();
        config.audio();
        config.fullRange();
        config.tenBit();
        config.hdr();

        QCOMPARE(logged(), QStringList({"definitionIndex: 1; sn: D3-77 é",
                                        "fpsIndex: 0; sn: D3-77 é", "encodeIndex: 3; sn: D3-77 é",
                                        "width: 2880; sn: D3-77 é", "height: 2656; sn: D3-77 é"}));
    }

    void theResolutionFollowsTheModel_data()
    {
        QTest::addColumn<QString>("serial");
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::newRow("D1") << "D1-1" << 1600 << 1600;
        QTest::newRow("D2") << "D2-1" << 1600 << 1600;
        QTest::newRow("D3") << "D3-1" << 2880 << 2656;
        QTest::newRow("unknown") << "X9" << 1600 << 1600;
        QTest::newRow("empty") << "" << 2880 << 2656;
    }

    void theResolutionFollowsTheModel()
    {
        QFETCH(QString, serial);
        writeThreeModels(serial);
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        QTEST(config.width(), "width");
        QTEST(config.height(), "height");
    }

    void theResolutionIsDerivedAgainOnlyAfterASave()
    {
        // A load derives it, too.
        writeThreeModels("X9");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);
        QVERIFY(config.setDeviceSn("D1-2"));
        QCOMPARE(config.width(), 1600);

        config.saveDeviceSettings("D3-2");
        QCOMPARE(config.height(), 2656);
        QCOMPARE(config.width(), 2880);

        // Before a load it comes from the serial of the start.
        ConfigManager unloaded = manager();
        QCOMPARE(unloaded.width(), 2880);
        unloaded.loadDeviceSettings(false, 0);
        QCOMPARE(unloaded.serial(), QString("D3-2"));
    }

    // Single values
    void bitRateAndScaleGoToTheModelOrTheSerialsObject_data()
    {
        theFirstLoadByModelHeedsTheSerialToo_data();
    }

    void bitRateAndScaleGoToTheModelOrTheSerialsObject()
    {
        QFETCH(QString, serial);
        QFETCH(int, model);
        QFETCH(QString, expected);
        writeThreeModels(serial);
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        config.setBitRate(81, true, model);
        config.setBitRate(82, false, model);
        config.saveDeviceSettings(QString());
        QJsonObject root = saved();
        for (const char *key : {"D1", "D2", "D3"}) {
            QJsonObject object = device_settings::fresh();
            object["codec"] = QString("codec of ") + key;
            if (object["codec"] == expected) {
                object["bitRate_wired"] = "81";
                object["bitRate"] = "82";
            }
            QCOMPARE(root[key].toObject(), object);
        }

        config.setCustomize(70, 91, true, model);
        config.saveDeviceSettings(QString());
        root = saved();
        for (const char *key : {"D1", "D2", "D3"}) {
            QJsonObject object = device_settings::fresh();
            object["codec"] = QString("codec of ") + key;
            if (object["codec"] == expected) {
                object["scale"] = "70";
                object["bitRate_wired"] = "91";
                object["bitRate"] = "82";
            }
            QCOMPARE(root[key].toObject(), object);
        }
    }

    void bitRateAndScaleAreNotSaved()
    {
        writeThreeModels("D3");
        const QByteArray before = readFile("set.json");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        config.setBitRate(81, true, 3);
        config.setCustomize(70, 91, true, 3);

        QCOMPARE(readFile("set.json"), before);
        QCOMPARE(logged(), QStringList());
    }

    // A headset connects
    void anEmptySerialIsNoHeadset()
    {
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);
        config.saveDeviceSettings("D2-1");
        clearLog();

        QVERIFY(!config.setDeviceSn(QString()));
        QVERIFY(!config.setDeviceSn(""));

        QCOMPARE(config.serial(), QString("D2-1"));
        QCOMPARE(logged(), QStringList());
    }

    void anotherHeadsetOfTheModelChangesOnlyTheSerial_data()
    {
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("after");
        QTest::newRow("D3") << "D3-1"
                            << "D3-2";
        QTest::newRow("the same") << "D3-1"
                                  << "D3-1";
        QTest::newRow("the first D3") << ""
                                      << "D3-1";
        QTest::newRow("D2") << "D2-1"
                            << "D2-2";
        QTest::newRow("D1 and unknown") << "D1-1"
                                        << "X9";
    }

    void anotherHeadsetOfTheModelChangesOnlyTheSerial()
    {
        QFETCH(QString, before);
        QFETCH(QString, after);
        writeThreeModels(before);
        const QByteArray file = readFile("set.json");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        QVERIFY(config.setDeviceSn(after));

        QCOMPARE(config.serial(), after);
        QCOMPARE(readFile("set.json"), file);
        QCOMPARE(logged(), QStringList());
    }

    void anotherModelsSettingsAreApplied()
    {
        writeFile("set.json", R"({"D2":{"definitionIndex":2,"fps":"72","codec":"H264","audio":true,
        "10bitenc":true,"fullrange":true,"hdr":true,"bitRate":"7","bitRate_wired":"8"},
        "D3":{"definitionIndex":0},"lastSn":"D3-1","wiredOrWireless":2})");
        writeFile("session.json", R"({"sessionSettings":{"video":{"preferredFps":90}}})");
        ConfigManager config = manager();
        const QJsonObject d3 = config.loadDeviceSettings(true, 3);

        QVERIFY(config.setDeviceSn("D2-1"));

        QCOMPARE(logged(), QStringList({"setDeviceSn: D2-1; codectype: 0",
                                        "definition: 2 fps: 0  encode: 0 audio: 1 wired: 0",
                                        "scale: 1.1 fps 0 "}));
        const QJsonObject d2 = saved()["D2"].toObject();
        QCOMPARE(d2["definitionIndex"], QJsonValue(2));
        QCOMPARE(d2["fps"], QJsonValue("72"));
        QCOMPARE(d2["codec"], QJsonValue("H264"));
        QCOMPARE(d2["10bitenc"], QJsonValue(false));
        QCOMPARE(d2["audio"], QJsonValue(true));
        QCOMPARE(d2["fullrange"], QJsonValue(true));
        QCOMPARE(d2["hdr"], QJsonValue(true));
        QCOMPARE(d2["scale"], QJsonValue("110"));
        QCOMPARE(d2["bitRate"], QJsonValue("100"));
        QCOMPARE(d2["bitRate_wired"], QJsonValue("8"));
        QCOMPARE(saved()["D3"].toObject(), d3);
        QCOMPARE(saved()["lastSn"], QJsonValue("D2-1"));
        QCOMPARE(QJsonDocument::fromJson(
                     readFile("session.json"))["sessionSettings"]["video"]["preferredFps"],
                 QJsonValue(72));

        // Another one of the same model brings nothing new.
        clearLog();
        QVERIFY(config.setDeviceSn("D2-2"));
        QCOMPARE(logged(), QStringList());
        QCOMPARE(saved()["lastSn"], QJsonValue("D2-1"));
        QCOMPARE(config.width(), 1600);
    }

    void anotherModelIsAppliedOverTheStoredLink_data()
    {
        QTest::addColumn<int>("link");
        QTest::addColumn<QString>("wired");
        QTest::addColumn<int>("linkAfter");
        QTest::newRow("wired") << 1 << "wired: 1" << 1;
        QTest::newRow("wireless") << 2 << "wired: 0" << 2;
        QTest::newRow("never chosen") << 0 << "wired: 0" << 2;
    }

    void anotherModelIsAppliedOverTheStoredLink()
    {
        QFETCH(int, link);
        QFETCH(QString, wired);
        QFETCH(int, linkAfter);
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);
        config.setWiredOrWireless(link);
        clearLog();

        QVERIFY(config.setDeviceSn("D1-1"));

        QCOMPARE(logged(), QStringList({"setDeviceSn: D1-1; codectype: 1",
                                        "definition: 1 fps: 1  encode: 1 audio: 0 " + wired,
                                        "scale: 1 fps 1 ", "no session json: ./session.json"}));
        QCOMPARE(config.wiredOrWireless(), linkAfter);
        QCOMPARE(saved()["wiredOrWireless"], QJsonValue(linkAfter));
    }

    void tenBitHevcComesBackAsPlainHevc()
    {
        writeFile("set.json", R"({"D2":{"codec":"HEVC","10bitenc":true}})");
        ConfigManager config = manager();
        config.loadDeviceSettings(false, 0);

        QVERIFY(config.setDeviceSn("D2-1"));

        QCOMPARE(logged().first(), QString("setDeviceSn: D2-1; codectype: 1"));
        QCOMPARE(config.encodeIndex(), 1);
        QVERIFY(!config.tenBit());
    }

    void theProductsStoreLiesInTheLocalDataFolder()
    {
        const QString folder =
            QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
        QVERIFY(QDir().mkpath(folder));
        const QString file = folder + "/set.json";
        QFile::remove(file);

        ConfigManager &config = ConfigManager::instance();
        QCOMPARE(&ConfigManager::instance(), &config);
        config.loadDeviceSettings(false, 0);
        config.saveDeviceSettings(QString());

        QVERIFY(QFile::exists(file));
        QVERIFY(QFile::remove(file));
    }

    void nvidiaIsFoundInAnyLetterCase_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("nvidia");
        QTest::newRow("as reported") << "NVIDIA GeForce RTX 4070" << true;
        QTest::newRow("lower case") << "nvidia" << true;
        QTest::newRow("inside") << "Card by nVidia Corp." << true;
        QTest::newRow("another maker") << "AMD Radeon RX 6800" << false;
        QTest::newRow("no maker") << "GeForce RTX 4070" << false;
        QTest::newRow("empty") << "" << false;
    }

    void nvidiaIsFoundInAnyLetterCase()
    {
        QFETCH(QString, name);

        QTEST(ConfigManager::isNvidia(name), "nvidia");
    }

private:
    ConfigManager manager() const
    {
        return ConfigManager(dir(), [] { return false; });
    }
    QJsonObject saved() const { return QJsonDocument::fromJson(readFile("set.json")).object(); }

    // A store whose models can be told apart by the codec name.
    void writeThreeModels(const QString &lastSn) const
    {
        QJsonObject root;
        for (const char *model : {"D1", "D2", "D3"}) {
            QJsonObject object = device_settings::fresh();
            object["codec"] = QString("codec of ") + model;
            root[model] = object;
        }
        root["lastSn"] = lastSn;
        root["wiredOrWireless"] = 1;
        writeFile("set.json", QJsonDocument(root).toJson());
    }
};

KOLM_TEST_MAIN(TestSettingsStore)
#include "tst_settings_store.moc"
