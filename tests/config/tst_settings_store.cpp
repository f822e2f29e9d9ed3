#include "tests/config/settings_fixture.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

// What is read from a store and set in it, one value at a time.
class TestSettingsStore : public SettingsFixture
{
    Q_OBJECT

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

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

    void bitRateAndScaleGoToTheModelOrTheSerialsObject_data() { addSerialsAndModels(); }

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
};

KOLM_TEST_MAIN(TestSettingsStore)
#include "tst_settings_store.moc"
