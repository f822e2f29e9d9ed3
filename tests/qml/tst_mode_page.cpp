#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

// The choice of the first run.
class TestModePage : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void modePageIsShownOnFirstRunOnly()
    {
        {
            Interface pages;
            pages.load();
            QVERIFY(!pages.shown("selectMode"));
            QVERIFY(pages.shown("steamPage"));
        }
        Interface pages;
        pages.orb.hideSelectPage = false;
        pages.load();
        QVERIFY(pages.shown("selectMode"));
        QCOMPARE(pages.item("selectMode")->x(), 30.0);
        QVERIFY(!pages.shown("steamPage"));
        QVERIFY(!pages.shown("headsetPage"));
        QVERIFY(!pages.shown("banner"));
        QCOMPARE(pages.orb.calls, (QStringList{"isHideSelectPage", "checkPortUsage"}));
    }

    void modePageStoresTheChoiceAndGoes_data()
    {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<QStringList>("calls");

        QTest::newRow("wired") << "chooseWired"
                               << QStringList{"wired=true", "reportstreamMode true false"};
        QTest::newRow("wireless") << "chooseWireless"
                                  << QStringList{"wired=false", "reportstreamMode false false"};
    }
    void modePageStoresTheChoiceAndGoes()
    {
        QFETCH(QString, choice);
        QFETCH(QStringList, calls);

        Interface pages;
        pages.orb.hideSelectPage = false;
        pages.load();
        pages.orb.calls.clear();
        pages.click(choice);
        QCOMPARE(pages.orb.calls, calls);
        QVERIFY(!pages.shown("selectMode"));
        QVERIFY(pages.shown("steamPage"));
        QVERIFY(pages.shown("headsetPage"));
        QVERIFY(pages.shown("banner"));
    }

    void theFirstRunSaysWhatLeavesThePc()
    {
        Interface pages;
        pages.orb.hideSelectPage = false;
        pages.load();
        QVERIFY(pages.shown("whatLeaves"));
    }
};

KOLM_GUI_TEST_MAIN(TestModePage)
#include "tst_mode_page.moc"
