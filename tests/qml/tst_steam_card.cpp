#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

Q_DECLARE_METATYPE(FakeOrb::SteamState)

// The card of Steam and SteamVR, and the marks that all cards have.
class TestSteamCard : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void steamIsLookedForAtFirst()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.text("steamPage", "title"), zh("Steam软件"));
        QCOMPARE(pages.text("steamPage", "status"), zh("检测中"));
        QVERIFY(pages.is("steamItem", "phase", "SteamItem.Unknown"));
        QVERIFY(pages.is("steamVRItem", "phase", "SteamItem.Unknown"));
        QVERIFY(!pages.button(zh("安装")));
        QVERIFY(!pages.button(zh("启动")));
    }

    void anyNewsEndsTheSearchForSteam_data()
    {
        QTest::addColumn<bool>("isSteam");
        QTest::newRow("Steam") << true;
        QTest::newRow("SteamVR") << false;
    }
    void anyNewsEndsTheSearchForSteam()
    {
        QFETCH(bool, isSteam);
        Interface pages;
        pages.load();
        if (isSteam)
            pages.orb.becomeSteam(false);
        else
            pages.orb.becomeSteamVR(false);
        QCOMPARE(pages.text("steamPage", "status"), zh("请按以下步骤操作"));
        QVERIFY(!pages.find("steamCheckTimer")->property("running").toBool());
    }

    // What is installed is known before what runs.
    void whatIsInstalledDoesNotEndTheSearchForSteam()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeSteamState(FakeOrb::Pass);
        QCOMPARE(pages.text("steamPage", "status"), zh("检测中"));
        QVERIFY(pages.is("steamItem", "phase", "SteamItem.Unknown"));
        QVERIFY(pages.find("steamCheckTimer")->property("running").toBool());
        pages.orb.becomeSteam(true);
        QCOMPARE(pages.text("steamPage", "status"), zh("请按以下步骤操作"));
    }

    void silenceEndsTheSearchForSteam()
    {
        Interface pages;
        pages.load();
        QVERIFY(pages.find("steamCheckTimer")->property("running").toBool());
        pages.clock.advance(1000); // when the controller looks
        QCOMPARE(pages.text("steamPage", "status"), zh("检测中"));
        pages.clock.advance(500);
        QCOMPARE(pages.text("steamPage", "status"), zh("请按以下步骤操作"));
    }

    void searchForSteamBeginsWhenTheCardIsSeen()
    {
        Interface pages;
        pages.orb.hideSelectPage = false;
        pages.load();
        QVERIFY(!pages.find("steamCheckTimer")->property("running").toBool());
        pages.click("chooseWireless");
        QVERIFY(pages.find("steamCheckTimer")->property("running").toBool());
    }

    void steamRowsFollowTheController_data()
    {
        QTest::addColumn<FakeOrb::SteamState>("state");
        QTest::addColumn<bool>("steam");
        QTest::addColumn<bool>("steamVR");
        QTest::addColumn<QString>("steamRow");
        QTest::addColumn<QString>("steamVRRow");
        QTest::addColumn<QString>("status");

        const QString todo = zh("请按以下步骤操作");
        QTest::newRow("no Steam") << FakeOrb::NoneSteam << false << false
                                  << zh("安装Steam软件|安装") << zh("安装Steam VR软件|安装")
                                  << todo;
        QTest::newRow("no SteamVR")
            << FakeOrb::NoneSteamVR << true << false << zh("Steam软件|已启动")
            << zh("安装Steam VR软件|安装") << todo;
        QTest::newRow("both stopped") << FakeOrb::Pass << false << false << zh("Steam软件|启动")
                                      << zh("Steam VR软件|启动") << todo;
        QTest::newRow("Steam runs") << FakeOrb::Pass << true << false << zh("Steam软件|已启动")
                                    << zh("Steam VR软件|启动") << todo;
        QTest::newRow("SteamVR alone") << FakeOrb::Pass << false << true << zh("Steam软件|启动")
                                       << zh("Steam VR软件|已启动") << todo;
        QTest::newRow("both run") << FakeOrb::Pass << true << true << zh("Steam软件|已启动")
                                  << zh("Steam VR软件|已启动") << zh("已就绪");
        QTest::newRow("Steam runs from an unknown place")
            << FakeOrb::NoneSteam << true << true << zh("Steam软件|已启动")
            << zh("Steam VR软件|已启动") << zh("已就绪");
    }
    void steamRowsFollowTheController()
    {
        QFETCH(FakeOrb::SteamState, state);
        QFETCH(bool, steam);
        QFETCH(bool, steamVR);
        QFETCH(QString, steamRow);
        QFETCH(QString, steamVRRow);
        QFETCH(QString, status);

        Interface pages;
        pages.load();
        pages.orb.becomeSteamState(state);
        pages.orb.becomeSteam(steam);
        pages.orb.becomeSteamVR(steamVR);

        QCOMPARE(Interface::texts(pages.item("steamItem")).join('|'), steamRow);
        QCOMPARE(Interface::texts(pages.item("steamVRItem")).join('|'), steamVRRow);
        QCOMPARE(pages.text("steamPage", "status"), status);
        QCOMPARE(pages.item("steamPage")->property("ready").toBool(), steam && steamVR);
    }

    void steamButtonsCall_data()
    {
        QTest::addColumn<FakeOrb::SteamState>("state");
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("call");

        QTest::newRow("install Steam") << FakeOrb::NoneSteam << "steamItem"
                                       << "gotoWeb 0";
        QTest::newRow("install Steam for SteamVR") << FakeOrb::NoneSteam << "steamVRItem"
                                                   << "gotoWeb 0";
        QTest::newRow("install SteamVR") << FakeOrb::NoneSteamVR << "steamVRItem"
                                         << "launchSteam true";
        QTest::newRow("start Steam") << FakeOrb::Pass << "steamItem"
                                     << "launchSteam false";
        QTest::newRow("start SteamVR") << FakeOrb::Pass << "steamVRItem"
                                       << "launchSteam true";
    }
    void steamButtonsCall()
    {
        QFETCH(FakeOrb::SteamState, state);
        QFETCH(QString, row);
        QFETCH(QString, call);

        Interface pages;
        pages.load();
        pages.orb.becomeSteamState(state);
        pages.orb.becomeSteam(false);
        pages.orb.calls.clear();
        QQuickItem *button = pages.button(zh("安装"), pages.item(row));
        if (!button)
            button = pages.button(zh("启动"), pages.item(row));
        pages.click(button);
        QCOMPARE(pages.orb.calls, QStringList(call));
    }

    void runningProgramsHaveNothingToPress()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeSteam(true);
        pages.orb.becomeSteamVR(true);
        pages.orb.calls.clear();
        pages.click(pages.button(zh("已启动"), pages.item("steamItem")));
        pages.click(pages.button(zh("已启动"), pages.item("steamVRItem")));
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void steamHelpOpensTheGuide()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.text("steamHelp"), zh("Steam VR检测不到设备？"));
        pages.orb.calls.clear();
        pages.click("steamHelp");
        QCOMPARE(pages.orb.calls, QStringList("gotoWeb 2"));
    }

    void statusIsNotToldByColourAlone_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("icon");

        QTest::newRow("todo") << "StatusMark.Todo"
                              << "orb_todo.png";
        QTest::newRow("done") << "StatusMark.Done"
                              << "orb_suc.png";
        QTest::newRow("attention") << "StatusMark.Attention"
                                   << "orb_attention.png";
        QTest::newRow("failure") << "StatusMark.Failure"
                                 << "orb_fail.png";
        QTest::newRow("current") << "StatusMark.Current"
                                 << "orb_current.png";
        QTest::newRow("info") << "StatusMark.Info"
                              << "orb_tips.png";
        QTest::newRow("busy") << "StatusMark.Busy"
                              << "orb_busy.png";
    }
    void statusIsNotToldByColourAlone()
    {
        QFETCH(QString, kind);
        QFETCH(QString, icon);

        Interface pages;
        pages.load();
        pages.item("steamPage")->setProperty("mark", pages.value(kind));
        QStringList icons;
        for (QQuickItem *item : Interface::shownItems(pages.item("steamPage"))) {
            if (item->inherits("QQuickImage"))
                icons.append(item->property("source").toUrl().fileName());
        }
        QCOMPARE(icons.value(0), icon);
    }
};

KOLM_GUI_TEST_MAIN(TestSteamCard)
#include "tst_steam_card.moc"
