#include "tests/base/denied_access.h"
#include "tests/config/settings_fixture.h"

#include <QDir>
#include <QFile>

// What a store is made of, whatever is in its file.
class TestSettingsLoading : public SettingsFixture
{
    Q_OBJECT

private slots:
    void withoutAFileEveryModelIsFresh()
    {
        ConfigManager config = manager();

        QCOMPARE(config.loadDeviceSettings(true, 3), device_settings::fresh());
        QCOMPARE(config.loadDeviceSettings(true, 2), device_settings::fresh());
        QCOMPARE(config.loadDeviceSettings(true, 1), device_settings::fresh());
        QCOMPARE(config.serial(), QString("D3"));
        QCOMPARE(config.wiredOrWireless(), 0);
        QCOMPARE(logged(), QStringList({settingsParseError}));
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
        QCOMPARE(logged(), QStringList({settingsParseError}));
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
        QCOMPARE(logged(), QStringList({settingsParseError}));
        QCOMPARE(readFile("set.json"), before);
    }
};

KOLM_TEST_MAIN(TestSettingsLoading)
#include "tst_settings_loading.moc"
