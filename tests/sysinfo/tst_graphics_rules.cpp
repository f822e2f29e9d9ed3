#include "sysinfo/graphics_rules.h"
#include "tests/support/test_case.h"

using graphics_adapters::Adapter;

namespace {

constexpr quint64 gib = 1ULL << 30;
constexpr quint64 mib = 1ULL << 20;

constexpr quint32 intel = 0x8086;
constexpr quint32 nvidia = 0x10de;
constexpr quint32 amd = 0x1002;
constexpr quint32 microsoft = 0x1414;
constexpr quint32 invalidArgument = 0x80070057;

} // namespace

Q_DECLARE_METATYPE(std::vector<Adapter>)

class TestGraphicsRules : public TestCase
{
    Q_OBJECT

private slots:
    void adaptersCountByTheirMakers_data()
    {
        QTest::addColumn<std::vector<Adapter>>("adapters");
        QTest::addColumn<QString>("integrated");
        QTest::addColumn<QString>("discrete");
        QTest::addColumn<QString>("vram");
        const Adapter uhd{intel, 0x3e9b, "UHD 630", 128 * mib};
        const Adapter rtx{nvidia, 0x2503, "RTX 3060", 12 * gib - mib};
        const Adapter gtx{nvidia, 0x1b80, "GTX 1080", 8 * gib - mib};
        const Adapter vega{amd, 0x1638, "Radeon Graphics", 512 * mib};
        const Adapter rx{amd, 0x73ff, "RX 6600 XT", 8 * gib - mib};
        const Adapter basic{microsoft, 0x8c, "Basic Render Driver", 0};
        const Adapter other{0x1af4, 0x1050, "Virtual", 0};
        using List = std::vector<Adapter>;

        QTest::newRow("none") << List{} << ""
                              << ""
                              << "";
        QTest::newRow("the basic render driver only") << List{basic} << ""
                                                      << ""
                                                      << "";
        QTest::newRow("another adapter of the same maker")
            << List{{microsoft, 0x8d, "Hyper-V", 0}} << "Hyper-V"
            << ""
            << "";
        QTest::newRow("another maker with the same number")
            << List{{intel, 0x8c, "Old", 0}} << "Old"
            << ""
            << "";
        QTest::newRow("Intel only") << List{uhd} << "UHD 630"
                                    << ""
                                    << "";
        QTest::newRow("NVIDIA only") << List{rtx} << ""
                                     << "RTX 3060"
                                     << "12GB";
        QTest::newRow("Intel and NVIDIA") << List{uhd, rtx} << "UHD 630"
                                          << "RTX 3060"
                                          << "12GB";
        QTest::newRow("NVIDIA and Intel") << List{rtx, uhd} << "UHD 630"
                                          << "RTX 3060"
                                          << "12GB";
        QTest::newRow("with the basic render driver last") << List{uhd, rtx, basic} << "UHD 630"
                                                           << "RTX 3060"
                                                           << "12GB";
        QTest::newRow("two of NVIDIA: the last counts") << List{rtx, gtx} << ""
                                                        << "GTX 1080"
                                                        << "8GB";
        QTest::newRow("a single AMD is integrated") << List{rx} << "RX 6600 XT"
                                                    << ""
                                                    << "";
        QTest::newRow("Intel, then AMD") << List{uhd, rx} << "UHD 630"
                                         << "RX 6600 XT"
                                         << "8GB";
        QTest::newRow("AMD, then Intel: no discrete one") << List{rx, uhd} << "UHD 630"
                                                          << ""
                                                          << "";
        QTest::newRow("two different of AMD") << List{vega, rx} << "Radeon Graphics"
                                              << "RX 6600 XT"
                                              << "8GB";
        QTest::newRow("two equal of AMD") << List{rx, rx} << "RX 6600 XT"
                                          << ""
                                          << "";
        QTest::newRow("AMD and NVIDIA") << List{vega, rtx} << "Radeon Graphics"
                                        << "RTX 3060"
                                        << "12GB";
        QTest::newRow("NVIDIA, then two of AMD") << List{rtx, vega, rx} << "Radeon Graphics"
                                                 << "RX 6600 XT"
                                                 << "8GB";
        QTest::newRow("an unknown maker replaces the integrated one")
            << List{uhd, other} << "Virtual"
            << ""
            << "";
    }
    void adaptersCountByTheirMakers()
    {
        QFETCH(std::vector<Adapter>, adapters);
        const graphics_rules::Graphics graphics = graphics_rules::classify(adapters);
        QTEST(graphics.integrated, "integrated");
        QTEST(graphics.discrete, "discrete");
        QTEST(graphics.vram, "vram");
    }

    void videoMemoryIsTheFullUnitsPlusOne_data()
    {
        QTest::addColumn<quint64>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << quint64(0) << "1M";
        QTest::newRow("512 MiB") << 512 * mib << "513M";
        QTest::newRow("a byte less") << 512 * mib - 1 << "512M";
        QTest::newRow("just below the unit changes") << 1023 * mib - 1 << "1023M";
        QTest::newRow("1023 MiB") << 1023 * mib << "1GB";
        QTest::newRow("1 GiB") << gib << "2GB";
        QTest::newRow("8 GiB") << 8 * gib << "9GB";
        QTest::newRow("8,589,000,000 bytes") << quint64(8589000000) << "8GB";
    }
    void videoMemoryIsTheFullUnitsPlusOne()
    {
        QFETCH(quint64, bytes);
        QTEST(graphics_rules::videoMemoryText(bytes), "text");
    }

    void everyLevelHasItsText_data()
    {
        QTest::addColumn<quint32>("result");
        QTest::addColumn<quint32>("level");
        QTest::addColumn<QString>("text");
        const QString unknown = "Unknown DirectX version";
        QTest::newRow("1.0 core") << 0U << 0x1000U << "DirectX 1.0 Core";
        QTest::newRow("9.1") << 0U << 0x9100U << "DirectX 9.1";
        QTest::newRow("9.2") << 0U << 0x9200U << "DirectX 9.2";
        QTest::newRow("9.3") << 0U << 0x9300U << "DirectX 9.3";
        QTest::newRow("10.0") << 0U << 0xa000U << "DirectX 10.0";
        QTest::newRow("10.1") << 0U << 0xa100U << "DirectX 10.1";
        QTest::newRow("11.0") << 0U << 0xb000U << "DirectX 11.0";
        QTest::newRow("11.1") << 0U << 0xb100U << "DirectX 11.1";
        QTest::newRow("12.0") << 0U << 0xc000U << "DirectX 12.0";
        QTest::newRow("12.1") << 0U << 0xc100U << "DirectX 12.1";
        QTest::newRow("12.2") << 0U << 0xc200U << unknown;
        QTest::newRow("nothing told") << 0U << 0U << unknown;
        QTest::newRow("failed") << 0x887a0004U << 0U << unknown;
        QTest::newRow("failed with a level") << 0x887a0004U << 0x9100U << "DirectX 9.1";
        QTest::newRow("too old a system")
            << invalidArgument << 0xb000U << "Current operation system DirectX is not supported!";
    }
    void everyLevelHasItsText()
    {
        QFETCH(quint32, result);
        QFETCH(quint32, level);
        const QString text = graphics_rules::directXText([&](const std::vector<quint32> &) {
            return feature_level::Answer{result, level};
        });
        QTEST(text, "text");
    }

    void theLevelsAreAskedForFromTheHighestDown()
    {
        std::vector<std::vector<quint32>> asked;
        graphics_rules::directXText([&](const std::vector<quint32> &levels) {
            asked.push_back(levels);
            return feature_level::Answer{0, 0xb000};
        });
        QCOMPARE(asked.size(), size_t(1));
        QCOMPARE(asked[0], (std::vector<quint32>{0xb000, 0xa100, 0xa000, 0x9300, 0x9200, 0x9100}));
    }

    void aSystemThatKnowsNoLevel11IsAskedOnceMoreWithoutIt()
    {
        std::vector<std::vector<quint32>> asked;
        const QString text = graphics_rules::directXText([&](const std::vector<quint32> &levels) {
            asked.push_back(levels);
            // The second answer does not matter.
            return asked.size() == 1 ? feature_level::Answer{invalidArgument, 0}
                                     : feature_level::Answer{0, 0xa100};
        });
        QCOMPARE(asked.size(), size_t(2));
        QCOMPARE(asked[1], (std::vector<quint32>{0xa100, 0xa000, 0x9300, 0x9200, 0x9100}));
        QCOMPARE(text, QString("Current operation system DirectX is not supported!"));
    }
};

KOLM_TEST_MAIN(TestGraphicsRules)
#include "tst_graphics_rules.moc"
