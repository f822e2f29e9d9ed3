#include "sysinfo/driver_rules.h"
#include "tests/support/test_case.h"

using display_drivers::Device;

class TestDriverRules : public TestCase
{
    Q_OBJECT

private slots:
    void aVersionHasFourDecimalFields_data()
    {
        QTest::addColumn<quint64>("version");
        QTest::addColumn<QString>("text");
        QTest::newRow("551.76") << quint64(0x001f'0000'000f'1438) << "31.0.15.5176";
        QTest::newRow("zero") << quint64(0) << "0.0.0.0";
        QTest::newRow("highest") << ~quint64(0) << "65535.65535.65535.65535";
        QTest::newRow("no field is padded") << quint64(0x0001'0020'0300'0004) << "1.32.768.4";
    }
    void aVersionHasFourDecimalFields()
    {
        QFETCH(quint64, version);
        QTEST(driver_rules::versionText(version), "text");
    }

    void anUpdateIsNeededWhenNoDriverIsNewEnough_data()
    {
        QTest::addColumn<QStringList>("versions");
        QTest::addColumn<bool>("needed");
        QTest::newRow("no NVIDIA driver") << QStringList{} << false;
        QTest::newRow("551.76") << QStringList{"31.0.15.5176"} << false;
        QTest::newRow("551.75") << QStringList{"31.0.15.5175"} << true;
        QTest::newRow("551.86") << QStringList{"31.0.15.5186"} << false;
        QTest::newRow("537.41") << QStringList{"31.0.15.3741"} << true;
        QTest::newRow("566.36") << QStringList{"32.0.15.6636"} << false;
        QTest::newRow("an old and a new one")
            << QStringList{"31.0.15.3741", "31.0.15.5176"} << false;
        QTest::newRow("a new and an old one")
            << QStringList{"31.0.15.5176", "31.0.15.3741"} << false;
        QTest::newRow("two old ones") << QStringList{"31.0.15.3741", "30.0.14.7212"} << true;
        QTest::newRow("six characters are not looked at") << QStringList{"9.9999"} << true;
        QTest::newRow("seven are") << QStringList{"1.9.9999"} << false;
        QTest::newRow("as text: a shorter remainder may be greater")
            << QStringList{"0.6.0.0"} << false;
        QTest::newRow("as text: a shorter remainder may be smaller")
            << QStringList{"0.5.0.0"} << true;
    }
    void anUpdateIsNeededWhenNoDriverIsNewEnough()
    {
        QFETCH(QStringList, versions);
        QTEST(driver_rules::needUpdate(versions), "needed");
    }

    void onlyNvidiasOwnDriversCountAndAllAreLogged()
    {
        const Device first{true,
                           {{"NVIDIA", 0x001f'0000'000f'1438},
                            {"Intel Corporation", 0x001f'0000'0065'0834},
                            {"NVIDIA", 0x001f'0000'000f'1438}}};
        const Device unlisted{false, {}};
        const Device last{true,
                          {{"NVIDIA Corporation", 0x0020'0000'000f'1438},
                           {"nvidia", 1},
                           {" NVIDIA", 2},
                           {"NVIDIA", 0x001e'0000'000e'1c2c}}};
        QCOMPARE(driver_rules::nvidiaVersions(std::vector<Device>{first, unlisted, last}),
                 QStringList({"31.0.15.5176", "31.0.15.5176", "30.0.14.7212"}));
        QCOMPARE(logged(),
                 QStringList({"[0]NVIDIA 驱动程序版本：31.0.15.5176",
                              "[1]Intel Corporation 驱动程序版本：31.0.101.2100",
                              "[2]NVIDIA 驱动程序版本：31.0.15.5176", "find none GPU",
                              "[0]NVIDIA Corporation 驱动程序版本：32.0.15.5176",
                              "[1]nvidia 驱动程序版本：0.0.0.1", "[2] NVIDIA 驱动程序版本：0.0.0.2",
                              "[3]NVIDIA 驱动程序版本：30.0.14.7212"}));
    }

    void aSystemThatCannotBeAskedHasNoVersions()
    {
        QCOMPARE(driver_rules::nvidiaVersions(std::nullopt), QStringList());
        QCOMPARE(logged(), QStringList{"SetupDiGetClassDevs failed"});
    }
};

KOLM_TEST_MAIN(TestDriverRules)
#include "tst_driver_rules.moc"
