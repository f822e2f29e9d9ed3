#include "tests/config/settings_fixture.h"

#include <QJsonDocument>

// A headset connects.
class TestSettingsOfHeadset : public SettingsFixture
{
    Q_OBJECT

private slots:
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
};

KOLM_TEST_MAIN(TestSettingsOfHeadset)
#include "tst_settings_of_headset.moc"
