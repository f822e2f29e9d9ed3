#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

// The line that says how far things are.
class TestBanner : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void bannerSaysHowFarThingsAre_data()
    {
        QTest::addColumn<bool>("steam");
        QTest::addColumn<bool>("steamVR");
        QTest::addColumn<bool>("headset");
        QTest::addColumn<QString>("icon");
        QTest::addColumn<QString>("text");

        const QString todo = zh("完成下列步骤，即可畅玩Steam游戏大作");
        const QString done = zh("恭喜您完成所有步骤，戴上VR设备开始畅玩游戏吧！～");
        QTest::newRow("nothing") << false << false << false << "orb_tips.png" << todo;
        QTest::newRow("Steam") << true << false << false << "orb_tips.png" << todo;
        QTest::newRow("Steam and SteamVR") << true << true << false << "orb_tips.png" << todo;
        QTest::newRow("headset alone") << false << false << true << "orb_tips.png" << done;
        QTest::newRow("headset and Steam") << true << false << true << "orb_tips.png" << done;
        QTest::newRow("all") << true << true << true << "orb_suc.png" << done;
    }
    void bannerSaysHowFarThingsAre()
    {
        QFETCH(bool, steam);
        QFETCH(bool, steamVR);
        QFETCH(bool, headset);
        QFETCH(QString, icon);
        QFETCH(QString, text);

        Interface pages;
        pages.load();
        pages.orb.becomeSteam(steam);
        pages.orb.becomeSteamVR(steamVR);
        pages.orb.becomeConnected(headset);

        QVERIFY(pages.shown("banner"));
        QCOMPARE(pages.item("banner")->property("color").value<QColor>(), QColor("#22242C"));
        QCOMPARE(pages.text("bannerIcon", "source"), "qrc:/res/image/" + icon);
        QCOMPARE(pages.text("bannerText"), text);
    }

    void bannerCanBeSentAway()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.text("bannerHide"), zh("不再提示"));
        QCOMPARE(pages.item("bannerHide")->property("textColor").value<QColor>(),
                 QColor("#1E68FF"));

        pages.click("bannerHide");
        QVERIFY(!pages.shown("banner"));
        pages.orb.becomeConnected(true);
        QVERIFY(!pages.shown("banner"));
    }

    void bannerShowsTips()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.click("bannerHide");
        QMetaObject::invokeMethod(window, "showTips",
                                  Q_ARG(QVariant, "qrc:/res/image/orb_fail.png"),
                                  Q_ARG(QVariant, "something to know"));
        QVERIFY(pages.shown("banner"));
        QCOMPARE(pages.text("bannerIcon", "source"), QStringLiteral("qrc:/res/image/orb_fail.png"));
        QCOMPARE(pages.text("bannerText"), QStringLiteral("something to know"));
    }
};

KOLM_GUI_TEST_MAIN(TestBanner)
#include "tst_banner.moc"
