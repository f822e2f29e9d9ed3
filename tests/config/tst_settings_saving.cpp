#include "tests/base/denied_access.h"
#include "tests/config/settings_fixture.h"

#include <QDir>
#include <QJsonDocument>

// What is written when, and what is not.
class TestSettingsSaving : public SettingsFixture
{
    Q_OBJECT

private slots:
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
        QCOMPARE(logged(), QStringList({settingsParseError}));

        config.saveDeviceSettings("D2");

        QCOMPARE(logged(), QStringList({settingsParseError}));
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
};

KOLM_TEST_MAIN(TestSettingsSaving)
#include "tst_settings_saving.moc"
