#include "config/config_manager.h"
#include "config/hardware_rules.h"
#include "tests/support/test_case.h"

#include <QFile>

namespace {

const QByteArray rules = R"({
    "cpu": { "mid": ["i7-97", "Ryzen 5 3600"], "low": ["i5-66", "i7"] },
    "graphics": {
        "high": ["RTX 4070", "RTX 3080", "rtx 4090", "RX 7900"],
        "mid": ["RTX 2060", "GTX 1080"],
        "low": ["GTX 970", "UHD"]
    }
})";

} // namespace

class TestHardwareRules : public TestCase
{
    Q_OBJECT

private slots:
    void theScoreIsTheSumOfProcessorAndCard_data()
    {
        QTest::addColumn<QString>("cpu");
        QTest::addColumn<QString>("gpu");
        QTest::addColumn<int>("score");
        QTest::addColumn<QString>("log");
        const QString i7 = "Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz";
        const QString i5 = "Intel(R) Core(TM) i5-6600 CPU @ 3.30GHz";
        QTest::newRow("nothing known") << ""
                                       << "" << 0 << "hardware: 0 0";
        QTest::newRow("nothing listed") << "Celeron"
                                        << "Radeon VII" << 0 << "hardware: 0 0";
        QTest::newRow("weak processor") << i5 << "Radeon VII" << 1 << "hardware: 1 0";
        QTest::newRow("sufficient processor") << i7 << "Radeon VII" << 4 << "hardware: 4 0";
        QTest::newRow("sufficient card") << "Celeron"
                                         << "GeForce RTX 2060" << 4 << "hardware: 0 4";
        QTest::newRow("weak processor, sufficient card")
            << i5 << "GeForce RTX 2060" << 5 << "hardware: 1 4";
        QTest::newRow("both sufficient") << i7 << "GeForce RTX 2060" << 8 << "hardware: 4 4";
        QTest::newRow("good card alone") << "Celeron"
                                         << "NVIDIA GeForce RTX 3080" << 8 << "hardware: 0 8";
        QTest::newRow("weak processor, good card")
            << i5 << "NVIDIA GeForce RTX 3080" << 9 << "hardware: 1 8";
        QTest::newRow("sufficient processor, good card")
            << i7 << "AMD Radeon RX 7900 XT" << 12 << "hardware: 4 8";
        QTest::newRow("a weak card has no weight")
            << i7 << "NVIDIA GeForce GTX 970" << 4 << "hardware: 4 0";
        QTest::newRow("the better list wins") << "i7-9700 i5-6600"
                                              << "RTX 2060 with RTX 3080" << 12 << "hardware: 4 8";
        QTest::newRow("a fragment in lower case")
            << "Celeron"
            << "NVIDIA GeForce RTX 4090" << 0 << "hardware: 0 0";
        QTest::newRow("a name in lower case")
            << i7.toLower().replace("i7", "I7") << "geforce rtx 3080" << 0 << "hardware: 0 0";
    }
    void theScoreIsTheSumOfProcessorAndCard()
    {
        QFETCH(QString, cpu);
        QFETCH(QString, gpu);
        QFETCH(QString, log);
        writeFile("compare.json", rules);
        QTEST(ConfigManager::hardwareScore(cpu, gpu), "score");
        QCOMPARE(logged(), QStringList{log});
    }

    void whatIsMissingInTheFileScoresNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("score");
        QTest::addColumn<QStringList>("log");
        const QStringList scored{"hardware: 0 0"};
        QTest::newRow("empty object") << QByteArray("{}") << 0 << scored;
        QTest::newRow("a list") << QByteArray("[1]") << 0 << scored;
        QTest::newRow("no processors")
            << QByteArray(R"({"graphics":{"high":["RTX"]}})") << 8 << QStringList{"hardware: 0 8"};
        QTest::newRow("no cards") << QByteArray(R"({"cpu":{"mid":["i7"]}})") << 4
                                  << QStringList{"hardware: 4 0"};
        QTest::newRow("no good cards")
            << QByteArray(R"({"graphics":{"mid":["RTX"]}})") << 4 << QStringList{"hardware: 0 4"};
        QTest::newRow("no sufficient processors")
            << QByteArray(R"({"cpu":{"low":["i7"]}})") << 1 << QStringList{"hardware: 1 0"};
        QTest::newRow("parts of other types")
            << QByteArray(R"({"cpu":["i7"],"graphics":"RTX"})") << 0 << scored;
        QTest::newRow("lists of other types")
            << QByteArray(R"({"cpu":{"mid":"i7"},"graphics":{"high":{"RTX":1}}})") << 0 << scored;
        QTest::newRow("a number is taken as its text")
            << QByteArray(R"({"graphics":{"high":[3080]}})") << 8 << QStringList{"hardware: 0 8"};
        QTest::newRow("empty file")
            << QByteArray("") << 0 << QStringList{"compare json parseError: 5"};
        QTest::newRow("cut off") << rules.left(40) << 0
                                 << QStringList{"compare json parseError: 10"};
    }
    void whatIsMissingInTheFileScoresNothing()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, log);
        writeFile("compare.json", content);
        QTEST(ConfigManager::hardwareScore("i7", "RTX 3080"), "score");
        QCOMPARE(logged(), log);
    }

    void withoutAFileNothingIsGoodEnoughAndNothingIsLogged()
    {
        const ConfigManager config(dir(), [] { return false; });
        QCOMPARE(ConfigManager::hardwareScore("i7-9700", "RTX 3080"), 0);
        QVERIFY(!config.isAv1Capable("RTX 4070"));
        QVERIFY(logged().isEmpty());
    }

    void aNewDownloadCountsAtTheNextCall()
    {
        writeFile("compare.json", R"({"graphics":{"high":["RTX 4070"]}})");
        QCOMPARE(ConfigManager::hardwareScore("", "RTX 4070"), 8);
        writeFile("compare.json", R"({"graphics":{"mid":["RTX 4070"]}})");
        QCOMPARE(ConfigManager::hardwareScore("", "RTX 4070"), 4);
        QVERIFY(QFile::remove("compare.json"));
        QCOMPARE(ConfigManager::hardwareScore("", "RTX 4070"), 0);
    }

    void av1IsForListedCardsOfTheFortySeriesAndModelThree_data()
    {
        QTest::addColumn<QByteArray>("high");
        QTest::addColumn<QString>("gpu");
        QTest::addColumn<QString>("serial");
        QTest::addColumn<bool>("capable");
        const QString card = "NVIDIA GeForce RTX 4070";
        QTest::newRow("model 3") << QByteArray(R"(["RTX 4070"])") << card << "D3A1" << true;
        QTest::newRow("model 2") << QByteArray(R"(["RTX 4070"])") << card << "D2A1" << false;
        QTest::newRow("no headset yet counts as model 3")
            << QByteArray(R"(["RTX 4070"])") << card << "" << true;
        QTest::newRow("serial in lower case")
            << QByteArray(R"(["RTX 4070"])") << card << "d3A1" << false;
        QTest::newRow("first of the series") << QByteArray(R"(["RTX 4000"])") << "Quadro RTX 4000"
                                             << "D3A1" << true;
        QTest::newRow("just below") << QByteArray(R"(["RTX 3999"])") << "RTX 3999"
                                    << "D3" << false;
        QTest::newRow("30 series") << QByteArray(R"(["RTX 3080"])") << "NVIDIA GeForce RTX 3080"
                                   << "D3A1" << false;
        QTest::newRow("not listed") << QByteArray(R"(["RTX 4080"])") << card << "D3A1" << false;
        QTest::newRow("listed in lower case")
            << QByteArray(R"(["rtx 4070"])") << card.toLower() << "D3A1" << false;
        QTest::newRow("the fragment begins with something else")
            << QByteArray(R"(["GeForce RTX 4070"])") << card << "D3A1" << false;
        QTest::newRow("the fragment has no number")
            << QByteArray(R"(["RTX"])") << card << "D3A1" << false;
        QTest::newRow("the fragment has three digits")
            << QByteArray(R"(["RTX 407"])") << card << "D3A1" << false;
        QTest::newRow("no blank") << QByteArray(R"(["RTX4070"])") << "RTX4070"
                                  << "D3A1" << true;
        QTest::newRow("a later fragment")
            << QByteArray(R"(["RTX 3080","RTX","GeForce","RTX 4070"])")
            << "GeForce RTX 4070 beside RTX 3080"
            << "D3A1" << true;
        QTest::newRow("empty list") << QByteArray("[]") << card << "D3A1" << false;
    }
    void av1IsForListedCardsOfTheFortySeriesAndModelThree()
    {
        QFETCH(QByteArray, high);
        QFETCH(QString, gpu);
        QFETCH(QString, serial);
        writeFile("compare.json", R"({"graphics":{"high":)" + high + "}}");
        ConfigManager config(dir(), [] { return false; });
        config.loadDeviceSettings(false, 0);
        config.saveDeviceSettings(serial);
        QTEST(config.isAv1Capable(gpu), "capable");
    }

    void onlyTheGoodCardsAreLookedAtForAv1()
    {
        writeFile("compare.json", R"({"graphics":{"mid":["RTX 4070"]},"cpu":{"mid":["i7"]}})");
        ConfigManager config(dir(), [] { return false; });
        config.saveDeviceSettings("D3A1");
        QVERIFY(!config.isAv1Capable("NVIDIA GeForce RTX 4070"));
        writeFile("compare.json", R"({"cpu":{"mid":["RTX 4070"]}})");
        QVERIFY(!config.isAv1Capable("NVIDIA GeForce RTX 4070"));
    }

    void aFileThatIsNoJsonIsLoggedForAv1Too()
    {
        writeFile("compare.json", "{\"graphics\":");
        ConfigManager config(dir(), [] { return false; });
        QVERIFY(!config.isAv1Capable("RTX 4070"));
        QCOMPARE(logged(), QStringList{"compare json parseError: 1"});
    }
};

KOLM_TEST_MAIN(TestHardwareRules)
#include "tst_hardware_rules.moc"
