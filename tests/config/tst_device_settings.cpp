#include "config/device_settings.h"
#include "tests/support/test_case.h"

#include <QJsonDocument>

using namespace device_settings;

namespace {

QJsonObject object(const char *json)
{
    QJsonParseError error;
    const QJsonObject result = QJsonDocument::fromJson(json, &error).object();
    Q_ASSERT(error.error == QJsonParseError::NoError);
    return result;
}

const char *const kFresh = R"({"fps":"90","bitRate":"50","bitRate_wired":"50","scale":"100",
    "audio":false,"customize":false,"codec":"HEVC","definitionIndex":1,"fullrange":false,
    "10bitenc":false,"hdr":false})";

QJsonObject repaired(QJsonObject object)
{
    repair(object);
    return object;
}

SettingsChoice choice(int definitionIndex, int encodeIndex)
{
    SettingsChoice choice;
    choice.definitionIndex = definitionIndex;
    choice.fpsIndex = 1;
    choice.encodeIndex = encodeIndex;
    return choice;
}

} // namespace

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

    void aFreshObject() { QCOMPARE(fresh(), object(kFresh)); }

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
        QJsonObject expected = object(kFresh);
        expected["definitionIndex"] = definitionIndex;
        expected["customize"] = customize;
        expected["bitRate"] = bitRate;
        expected["bitRate_wired"] = bitRate;
        // A number, while a fresh object has a text.
        expected["scale"] = 100;

        QCOMPARE(repaired(object(before)), expected);
    }

    void whatIsThereIsNotRepaired()
    {
        const QJsonObject strange =
            object(R"({"fps":72,"bitRate":null,"bitRate_wired":[],"scale":"",
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

        QTEST(fpsIndex(object(settings)), "index");
    }

    void aFrameRateIndexIsHertz_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<double>("hertz");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << 0 << 72.0 << "72";
        QTest::newRow("1") << 1 << 90.0 << "90";
        QTest::newRow("2") << 2 << 72.0 << "72";
        QTest::newRow("-1") << -1 << 72.0 << "72";
    }

    void aFrameRateIndexIsHertz()
    {
        QFETCH(int, index);
        QFETCH(QString, text);
        QJsonObject settings;
        SettingsChoice chosen = choice(1, 1);
        chosen.fpsIndex = index;

        storeChoice(settings, chosen, LinkKind::Wireless, "D3");

        QTEST(fpsOf(index), "hertz");
        QCOMPARE(settings["fps"], QJsonValue(text));
    }

    void aDefinitionIsBitRateAndScale_data()
    {
        QTest::addColumn<int>("definitionIndex");
        QTest::addColumn<int>("encodeIndex");
        QTest::addColumn<QString>("serial");
        QTest::addColumn<QString>("bitRate"); // "77" was there before
        QTest::addColumn<QString>("scaleText");
        QTest::addColumn<double>("scale");
        const auto add = [](int definitionIndex, int encodeIndex, const char *serial,
                            const char *bitRate, const char *scaleText, double scale) {
            const QByteArray name = QByteArray::number(definitionIndex) + ", encoder " +
                                    QByteArray::number(encodeIndex) + ", '" + serial + "'";
            QTest::newRow(name) << definitionIndex << encodeIndex << QString(serial) << bitRate
                                << scaleText << scale;
        };
        add(0, 0, "D3A", "20", "80", 0.8);
        add(1, 0, "D3A", "50", "90", 0.9);
        add(2, 0, "D3A", "100", "100", 1.0);
        for (const int encodeIndex : {1, 2, 3, -1, 4}) {
            add(0, encodeIndex, "D3A", "20", "90", 0.9);
            add(1, encodeIndex, "D3A", "50", "100", 1.0);
            add(2, encodeIndex, "D3A", "100", "110", 1.1);
        }
        // The smaller scale is for serials that say D3; an empty one does not.
        for (const char *serial : {"D2A", "D1A", "X9", "d3A", ""}) {
            add(0, 0, serial, "20", "90", 0.9);
            add(1, 0, serial, "50", "100", 1.0);
            add(2, 0, serial, "100", "110", 1.1);
        }
        for (const int definitionIndex : {-1, 4, 100}) {
            add(definitionIndex, 0, "D3A", "77", "100", 1.0);
            add(definitionIndex, 1, "D2A", "77", "100", 1.0);
        }
    }

    void aDefinitionIsBitRateAndScale()
    {
        QFETCH(int, definitionIndex);
        QFETCH(int, encodeIndex);
        QFETCH(QString, serial);
        QFETCH(QString, bitRate);
        QFETCH(QString, scaleText);
        for (const bool wired : {false, true}) {
            QJsonObject settings =
                object(R"({"bitRate":"77","bitRate_wired":"77","customize":true})");
            const SettingsChoice chosen = choice(definitionIndex, encodeIndex);

            QTEST(storeChoice(settings, chosen, linkKind(wired), serial), "scale");

            QCOMPARE(settings["definitionIndex"], QJsonValue(definitionIndex));
            QCOMPARE(settings["bitRate"], QJsonValue(wired ? QString("77") : bitRate));
            QCOMPARE(settings["bitRate_wired"], QJsonValue(wired ? bitRate : QString("77")));
            QCOMPARE(settings["scale"], QJsonValue(scaleText));
            QCOMPARE(settings["customize"], QJsonValue(false));
        }
    }

    void aCustomDefinitionKeepsBitRateAndScale_data()
    {
        QTest::addColumn<QJsonValue>("stored");
        QTest::addColumn<QString>("scaleText");
        QTest::addColumn<double>("scale");
        QTest::newRow("100") << QJsonValue("100") << "100" << 1.0;
        QTest::newRow("115") << QJsonValue("115") << "115" << 1.15;
        QTest::newRow("57") << QJsonValue("57") << "57" << 0.57;
        QTest::newRow("0") << QJsonValue("0") << "0" << 0.0;
        QTest::newRow("-20") << QJsonValue("-20") << "-20" << -0.2;
        QTest::newRow("seven digits") << QJsonValue("1234567") << "1.23457e+06" << 12345.67;
        QTest::newRow("the number of a repaired object") << QJsonValue(100) << "0" << 0.0;
        QTest::newRow("no decimal text") << QJsonValue("115.5") << "0" << 0.0;
        QTest::newRow("rubbish") << QJsonValue("abc") << "0" << 0.0;
        QTest::newRow("beyond an integer") << QJsonValue("99999999999") << "0" << 0.0;
        QTest::newRow("none") << QJsonValue(QJsonValue::Undefined) << "0" << 0.0;
    }

    void aCustomDefinitionKeepsBitRateAndScale()
    {
        QFETCH(QJsonValue, stored);
        QFETCH(QString, scaleText);
        QJsonObject settings = object(R"({"bitRate":"61","bitRate_wired":"62"})");
        settings.insert("scale", stored);

        // H.264 on a D3 makes no difference here.
        QTEST(storeChoice(settings, choice(3, 0), LinkKind::Wireless, "D3A"), "scale");

        QCOMPARE(settings["scale"], QJsonValue(scaleText));
        QCOMPARE(settings["bitRate"], QJsonValue("61"));
        QCOMPARE(settings["bitRate_wired"], QJsonValue("62"));
        QCOMPARE(settings["customize"], QJsonValue(true));
        QCOMPARE(settings["definitionIndex"], QJsonValue(3));
    }

    void anEncoderIsCodecAndBits_data()
    {
        QTest::addColumn<int>("encodeIndex");
        QTest::addColumn<bool>("tenBit");
        QTest::addColumn<QString>("codec");
        QTest::addColumn<bool>("stored");
        for (const bool tenBit : {false, true}) {
            const auto add = [tenBit](int encodeIndex, const char *codec, bool stored) {
                QTest::newRow(QByteArray::number(encodeIndex) + (tenBit ? ", 10 bits" : ", 8 bits"))
                    << encodeIndex << tenBit << codec << stored;
            };
            add(0, "H264", false);
            add(1, "HEVC", false);
            add(2, "HEVC", true);
            add(3, "AV01", true);
            add(-1, "HEVC", false);
            add(-100, "HEVC", false);
            add(4, "HEVC", tenBit);
            add(99, "HEVC", tenBit);
        }
    }

    void anEncoderIsCodecAndBits()
    {
        QFETCH(int, encodeIndex);
        QFETCH(bool, tenBit);
        QFETCH(QString, codec);
        QFETCH(bool, stored);
        QJsonObject settings = fresh();
        SettingsChoice chosen = choice(1, encodeIndex);
        chosen.tenBit = tenBit;

        storeChoice(settings, chosen, LinkKind::Wireless, "D3");

        QCOMPARE(settings["codec"], QJsonValue(codec));
        QCOMPARE(settings["10bitenc"], QJsonValue(stored));
    }

    void theSwitchesAreStored_data()
    {
        QTest::addColumn<bool>("audio");
        QTest::addColumn<bool>("fullRange");
        QTest::addColumn<bool>("hdr");
        QTest::newRow("none") << false << false << false;
        QTest::newRow("audio") << true << false << false;
        QTest::newRow("full range") << false << true << false;
        QTest::newRow("HDR") << false << false << true;
    }

    void theSwitchesAreStored()
    {
        QFETCH(bool, audio);
        QFETCH(bool, fullRange);
        QFETCH(bool, hdr);
        QJsonObject settings = object(R"({"audio":"?","fullrange":"?","hdr":"?"})");

        SettingsChoice chosen = choice(1, 1);
        chosen.audio = audio;
        chosen.fullRange = fullRange;
        chosen.hdr = hdr;
        storeChoice(settings, chosen, LinkKind::Wireless, "D3");

        QCOMPARE(settings["audio"], QJsonValue(audio));
        QCOMPARE(settings["fullrange"], QJsonValue(fullRange));
        QCOMPARE(settings["hdr"], QJsonValue(hdr));
    }

    void aChoiceKeepsUnknownMembers()
    {
        QJsonObject settings = fresh();
        settings["unknown"] = QJsonObject{{"a", 1}};

        storeChoice(settings, choice(2, 1), LinkKind::Wireless, "D3");

        QJsonObject expected = fresh();
        expected["unknown"] = QJsonObject{{"a", 1}};
        expected["definitionIndex"] = 2;
        expected["scale"] = "110";
        expected["bitRate"] = "100";
        QCOMPARE(settings, expected);
    }
};

KOLM_TEST_MAIN(TestDeviceSettings)
#include "tst_device_settings.moc"
