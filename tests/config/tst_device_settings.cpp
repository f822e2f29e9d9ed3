#include "config/device_settings.h"
#include "tests/support/json.h"
#include "tests/support/test_case.h"

using namespace device_settings;

namespace {

const char *const kFresh = R"({"fps":"90","bitRate":"50","bitRate_wired":"50","scale":"100",
    "audio":false,"customize":false,"codec":"HEVC","definitionIndex":1,"fullrange":false,
    "10bitenc":false,"hdr":false})";

QJsonObject repaired(QJsonObject object)
{
    repair(object);
    return object;
}

} // namespace

// The settings of one model.
class TestDeviceSettings : public TestCase
{
    Q_OBJECT

private slots:
    void aSerialTellsTheModel_data()
    {
        QTest::addColumn<QString>("serial");
        QTest::addColumn<int>("model");
        const auto add = [](const char *serial, int model) {
            QTest::newRow(serial) << QString(serial) << model;
        };
        add("", 3);
        add("D3", 3);
        add("D3A1B2", 3);
        add("D2", 2);
        add("D2-77", 2);
        add("D1", 1);
        add("D1X", 1);
        add("X9", 1);
        add("d3", 1);
        add("d2", 1);
        add("D", 1);
        add("D4", 1);
        add(" D3", 1);
        add("3D", 1);
    }

    void aSerialTellsTheModel()
    {
        QFETCH(QString, serial);

        QTEST(modelOf(serial), "model");
    }

    void aCodecAndItsBitsAreOneIndex_data()
    {
        QTest::addColumn<QString>("codec");
        QTest::addColumn<int>("index8");
        QTest::addColumn<int>("index10");
        QTest::newRow("H.264") << "H264" << 0 << 0;
        QTest::newRow("HEVC") << "HEVC" << 1 << 2;
        QTest::newRow("AV1") << "AV01" << 3 << 3;
        QTest::newRow("none") << "" << 1 << 1;
        QTest::newRow("lower case") << "hevc" << 1 << 1;
        QTest::newRow("lower case h264") << "h264" << 1 << 1;
        QTest::newRow("unknown") << "VP9" << 1 << 1;
        QTest::newRow("another name of AV1") << "AV1" << 1 << 1;
    }

    void aCodecAndItsBitsAreOneIndex()
    {
        QFETCH(QString, codec);

        QTEST(codecIndex(codec, false), "index8");
        QTEST(codecIndex(codec, true), "index10");
    }

    void aFreshObject() { QCOMPARE(fresh(), jsonObject(kFresh)); }

    void anIncompleteObjectIsFilled_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<int>("definitionIndex");
        QTest::addColumn<bool>("customize");
        QTest::addColumn<QString>("bitRate");
        const auto add = [](const char *name, const char *before, int definitionIndex,
                            bool customize, const char *bitRate) {
            QTest::newRow(name) << QByteArray(before) << definitionIndex << customize << bitRate;
        };
        add("empty", "{}", 1, false, "50");
        add("custom", R"({"customize":true})", 3, true, "50");
        add("not custom", R"({"customize":false})", 1, false, "50");
        add("smooth", R"({"definitionIndex":0})", 0, false, "20");
        add("standard", R"({"definitionIndex":1})", 1, false, "50");
        add("high", R"({"definitionIndex":2})", 2, false, "100");
        add("custom by index", R"({"definitionIndex":3})", 3, false, "50");
        add("out of range", R"({"definitionIndex":17})", 17, false, "50");
        add("below the range", R"({"definitionIndex":-1})", -1, false, "50");
        add("custom, but with an index", R"({"customize":true,"definitionIndex":0})", 0, true,
            "20");
    }

    void anIncompleteObjectIsFilled()
    {
        QFETCH(QByteArray, before);
        QFETCH(int, definitionIndex);
        QFETCH(bool, customize);
        QFETCH(QString, bitRate);
        QJsonObject expected = jsonObject(kFresh);
        expected["definitionIndex"] = definitionIndex;
        expected["customize"] = customize;
        expected["bitRate"] = bitRate;
        expected["bitRate_wired"] = bitRate;
        // A number, while a fresh object has a text.
        expected["scale"] = 100;

        QCOMPARE(repaired(jsonObject(before)), expected);
    }

    void whatIsThereIsNotRepaired()
    {
        const QJsonObject strange =
            jsonObject(R"({"fps":72,"bitRate":null,"bitRate_wired":[],"scale":"",
        "audio":"yes","customize":1,"codec":{},"definitionIndex":"2","fullrange":null,
        "10bitenc":"","hdr":{},"unknown":{"a":[1]}})");

        QCOMPARE(repaired(strange), strange);
        QCOMPARE(repaired(fresh()), fresh());
    }

    void eachMissingMemberAloneIsFilled()
    {
        QJsonObject whole = repaired({{"unknown", "kept"}});
        for (const QString &key : whole.keys()) {
            QJsonObject without = whole;
            without.remove(key);
            if (key == "unknown")
                QVERIFY(!repaired(without).contains(key));
            else
                QCOMPARE(repaired(without), whole);
        }
    }

    void aBitRateIsStoredForItsLink()
    {
        QJsonObject settings = fresh();

        storeBitRate(settings, 80, LinkKind::Wired);
        QCOMPARE(settings["bitRate_wired"], QJsonValue("80"));
        QCOMPARE(settings["bitRate"], QJsonValue("50"));
        storeBitRate(settings, -1, LinkKind::Wireless);
        QCOMPARE(settings["bitRate_wired"], QJsonValue("80"));
        QCOMPARE(settings["bitRate"], QJsonValue("-1"));
    }

    void aScaleIsStoredAsText()
    {
        QJsonObject settings = fresh();

        storeScale(settings, 115);

        QCOMPARE(settings["scale"], QJsonValue("115"));
    }

    void aFrameRateIndexIsReadFromText_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<int>("index");
        QTest::newRow("72") << QByteArray(R"({"fps":"72"})") << 0;
        QTest::newRow("90") << QByteArray(R"({"fps":"90"})") << 1;
        QTest::newRow("a number") << QByteArray(R"({"fps":72})") << 1;
        QTest::newRow("72.0") << QByteArray(R"({"fps":"72.0"})") << 1;
        QTest::newRow("none") << QByteArray("{}") << 1;
    }

    void aFrameRateIndexIsReadFromText()
    {
        QFETCH(QByteArray, settings);

        QTEST(fpsIndex(jsonObject(settings)), "index");
    }
};

KOLM_TEST_MAIN(TestDeviceSettings)
#include "tst_device_settings.moc"
