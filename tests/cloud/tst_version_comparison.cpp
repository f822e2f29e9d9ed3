#include "cloud/version_comparison.h"
#include "tests/support/test_case.h"

class TestVersionComparison : public TestCase
{
    Q_OBJECT

private slots:
    void theFirstDifferenceDecides_data()
    {
        QTest::addColumn<QString>("own");
        QTest::addColumn<QString>("remote");
        QTest::addColumn<bool>("newer");
        const QString own = "1.1.16.400";
        QTest::newRow("last part higher") << own << "1.1.16.401" << true;
        QTest::newRow("the same") << own << own << false;
        QTest::newRow("third part lower") << own << "1.1.15.999" << false;
        QTest::newRow("second part higher") << own << "1.2.0" << true;
        QTest::newRow("first part higher") << own << "2.0.0" << true;
        QTest::newRow("first part lower") << own << "0.9.99.999" << false;
        QTest::newRow("two parts") << own << "1.1" << false;
        QTest::newRow("two higher parts") << own << "9.9" << false;
        QTest::newRow("three equal parts") << own << "1.1.16" << false;
        QTest::newRow("five parts") << own << "1.1.16.400.1" << false;
        QTest::newRow("leading letter") << own << "v1.2.0.0" << false;
        QTest::newRow("letter behind") << own << "1.1b.17.0" << false;
        QTest::newRow("empty") << own << "" << false;
        QTest::newRow("dots") << own << "..." << false;
        QTest::newRow("empty parts count as 0") << own << "2..." << true;
        QTest::newRow("trailing dot") << own << "1.1.17." << true;
        QTest::newRow("numbers, not texts") << own << "1.1.9.999" << false;
        QTest::newRow("leading zeros") << own << "1.1.0016.0401" << true;
        QTest::newRow("negative") << own << "1.1.-16.0" << false;
        QTest::newRow("beyond a number") << own << "99999999999.0.0.0" << false;
        QTest::newRow("highest against lowest") << "-2147483648.0.0"
                                                << "2147483647.0.0" << true;
        QTest::newRow("lowest against highest") << "2147483647.0.0"
                                                << "-2147483648.0.0" << false;
        QTest::newRow("short own version") << "1.1"
                                           << "1.2.0.0" << false;
        QTest::newRow("packaged, newer") << "KOLM_1.1.16_400"
                                         << "1.1.16.401" << true;
        QTest::newRow("packaged, the same") << "KOLM_1.1.16_400"
                                            << "1.1.16.400" << false;
        QTest::newRow("packaged, older") << "9.9.9_1.1.16_400"
                                         << "1.1.16.399" << false;
        QTest::newRow("one underscore") << "KOLM_1.1.16.400"
                                        << "1.0.0.0" << true;
        QTest::newRow("three underscores") << "1.1.16_4_2_0"
                                           << "1.1.17" << true;
    }
    void theFirstDifferenceDecides()
    {
        QFETCH(QString, own);
        QFETCH(QString, remote);
        QFETCH(bool, newer);
        QCOMPARE(isNewerVersion(own, remote), newer);
    }
};

KOLM_TEST_MAIN(TestVersionComparison)
#include "tst_version_comparison.moc"
