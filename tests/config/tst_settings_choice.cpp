#include "config/device_settings.h"
#include "tests/support/json.h"
#include "tests/support/test_case.h"

using namespace device_settings;

namespace {

SettingsChoice choice(int definitionIndex, int encodeIndex)
{
    SettingsChoice choice;
    choice.definitionIndex = definitionIndex;
    choice.fpsIndex = 1;
    choice.encodeIndex = encodeIndex;
    return choice;
}

} // namespace

// What becomes of a model's settings when the user has chosen some.
class TestSettingsChoice : public TestCase
{
    Q_OBJECT

private slots:
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
                jsonObject(R"({"bitRate":"77","bitRate_wired":"77","customize":true})");
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
        QJsonObject settings = jsonObject(R"({"bitRate":"61","bitRate_wired":"62"})");
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
        QJsonObject settings = jsonObject(R"({"audio":"?","fullrange":"?","hdr":"?"})");

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

KOLM_TEST_MAIN(TestSettingsChoice)
#include "tst_settings_choice.moc"
