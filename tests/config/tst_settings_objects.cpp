#include "tests/config/settings_fixture.h"

// Which model's object is meant.
class TestSettingsObjects : public SettingsFixture
{
    Q_OBJECT

private slots:
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

    void theFirstLoadByModelHeedsTheSerialToo_data() { addSerialsAndModels(); }

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
};

KOLM_TEST_MAIN(TestSettingsObjects)
#include "tst_settings_objects.moc"
