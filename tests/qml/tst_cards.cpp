#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

namespace {

const QString configuration = QStringLiteral("[[\"CPU:\",\"Some i7\"],[\"GPU:\",\"<b>Card</b>\"]]");

} // namespace

Q_DECLARE_METATYPE(FakeOrb::SteamState)

// The cards of the PC, of Steam and of the headset, and what lies behind them.
class TestCards : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void pcIsLookedAtFirst()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.text("systemPage", "title"), zh("PC配置"));
        QCOMPARE(pages.text("systemPage", "status"), zh("检测中"));
        QVERIFY(pages.is("systemPage", "mark", "StatusMark.Busy"));
        QCOMPARE(pages.orb.hardwareReads, 0);
    }

    void verdictOnThePC_data()
    {
        QTest::addColumn<int>("hardware");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("mark");

        QTest::newRow("cannot") << int(FakeOrb::NotCanRun) << zh("本机配置无法串流")
                                << "StatusMark.Failure";
        QTest::newRow("low") << int(FakeOrb::LowHardware) << zh("本机配置符合要求")
                             << "StatusMark.Done";
        QTest::newRow("good") << int(FakeOrb::AdviceHardware) << zh("本机配置符合要求")
                              << "StatusMark.Done";
        QTest::newRow("best") << int(FakeOrb::ExcellentHardware) << zh("本机配置符合要求")
                              << "StatusMark.Done";
    }
    void verdictOnThePC()
    {
        QFETCH(int, hardware);
        QFETCH(QString, status);
        QFETCH(QString, mark);

        Interface pages;
        pages.load();
        pages.orb.becomeSystemInfo("[]", configuration);
        pages.orb.becomeHardware(FakeOrb::HardwareState(hardware));
        QCOMPARE(pages.text("systemPage", "status"), status);
        QVERIFY(pages.is("systemPage", "mark", mark));
    }

    // Every question is reported as a page that was seen.
    void verdictIsAskedForOnceForEachLook()
    {
        Interface pages;
        pages.orb.becomeSystemInfo("[]", configuration);
        pages.orb.becomeHardware(FakeOrb::AdviceHardware);
        pages.load();
        pages.settle();
        QCOMPARE(pages.text("systemPage", "status"), zh("本机配置符合要求"));
        QCOMPARE(pages.orb.hardwareReads, 1);

        pages.orb.becomeHardware(FakeOrb::NotCanRun);
        pages.settle();
        QCOMPARE(pages.text("systemPage", "status"), zh("本机配置无法串流"));
        QCOMPARE(pages.orb.hardwareReads, 2);
    }

    // The question may bring the notice about the graphics driver.
    void verdictWaitsForTheWindow()
    {
        Interface pages;
        pages.realDialogs = false;
        pages.orb.becomeSystemInfo("[]", configuration);
        int readsAtPortCheck = -1;
        pages.orb.onCall = [&](const QString &call) {
            if (call == QLatin1String("checkPortUsage"))
                readsAtPortCheck = pages.orb.hardwareReads;
        };
        pages.load();
        QCOMPARE(readsAtPortCheck, 0);
        QCOMPARE(pages.orb.hardwareReads, 1);
    }

    void configurationIsListed()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeSystemInfo("[]", configuration);
        const QStringList shown = Interface::texts(pages.item("systemPage"));
        QCOMPARE(shown.mid(shown.indexOf("CPU:")),
                 (QStringList{"CPU:", "Some i7", "GPU:", "<b>Card</b>", zh("查看更多配置")}));
    }

    void brokenConfigurationIsAnEmptyOne_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty text") << QString();
        QTest::newRow("no JSON") << "[[";
        QTest::newRow("not an array") << "{}";
        QTest::newRow("null") << "null";
    }
    void brokenConfigurationIsAnEmptyOne()
    {
        QFETCH(QString, text);
        Interface pages;
        pages.load();
        pages.orb.becomeSystemInfo("[]", text);
        pages.orb.becomeHardware(FakeOrb::AdviceHardware);
        QCOMPARE(pages.text("systemPage", "status"), zh("检测中"));
        QCOMPARE(pages.orb.hardwareReads, 0);
    }

    void moreOpensTheSystemInformation()
    {
        Interface pages;
        pages.realDialogs = false;
        pages.load();
        pages.click("systemMore");
        QCOMPARE(pages.dialogFile(), QStringLiteral("SystemInfoPage.qml"));
    }

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

    void headsetCardShowsItsName()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.text("headsetPage", "title"), zh("星程之光眼镜"));
        pages.orb.becomeConnected(true, zh("眼镜ID：4B2F91"));
        QCOMPARE(pages.text("headsetPage", "title"), zh("眼镜ID：4B2F91"));
    }

    void statusOfTheHeadset_data()
    {
        QTest::addColumn<bool>("wired");
        QTest::addColumn<bool>("enumerated");
        QTest::addColumn<int>("listed");
        QTest::addColumn<bool>("connected");
        QTest::addColumn<bool>("userDisconnected");
        QTest::addColumn<QString>("status");

        const QString connected = zh("已连接，戴上眼镜开始串流吧！");
        QTest::newRow("wireless, none") << false << false << 0 << false << false << zh("搜索中");
        QTest::newRow("wireless, none, let go")
            << false << false << 0 << false << true << zh("搜索中");
        QTest::newRow("wireless, one")
            << false << false << 1 << false << false << zh("请选择眼镜连接");
        QTest::newRow("wireless, one that was let go")
            << false << false << 1 << false << true << zh("请选择眼镜连接");
        QTest::newRow("wireless, several")
            << false << false << 3 << false << false << zh("请选择设备连接");
        QTest::newRow("wireless, connected") << false << false << 2 << true << false << connected;
        QTest::newRow("wired, none") << true << false << 0 << false << false << zh("检测中");
        QTest::newRow("wired, list of before")
            << true << false << 2 << false << false << zh("检测中");
        QTest::newRow("wired, plugged in") << true << true << 0 << false << false << zh("连接中");
        QTest::newRow("wired, connected") << true << true << 0 << true << false << connected;
    }
    void statusOfTheHeadset()
    {
        QFETCH(bool, wired);
        QFETCH(bool, enumerated);
        QFETCH(int, listed);
        QFETCH(bool, connected);
        QFETCH(bool, userDisconnected);
        QFETCH(QString, status);

        Interface pages;
        pages.load();
        pages.orb.becomeWired(wired);
        pages.orb.becomeEnumerated(enumerated);
        std::vector<FakeHeadsets::Row> rows;
        for (int i = 0; i < listed; ++i)
            rows.push_back({QString::number(i), "1.2.3.4", connected && i == 0, false});
        pages.orb.headsets.fill(rows);
        pages.orb.becomeConnected(connected);
        emit pages.orb.showVrList(connected, userDisconnected);

        QCOMPARE(pages.text("headsetPage", "status"), status);
    }

    void oneHeadsetIsConnectedOnlyWhenItIsAwaited_data()
    {
        QTest::addColumn<QString>("awaited");
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("status");

        QTest::newRow("awaited") << "A"
                                 << "1.2.3.4" << zh("连接中");
        QTest::newRow("nobody is awaited") << ""
                                           << "1.2.3.4" << zh("请选择眼镜连接");
        QTest::newRow("another is awaited") << "B"
                                            << "1.2.3.4" << zh("请选择眼镜连接");
        QTest::newRow("without an address") << "A"
                                            << "" << zh("请选择眼镜连接");
    }
    void oneHeadsetIsConnectedOnlyWhenItIsAwaited()
    {
        QFETCH(QString, awaited);
        QFETCH(QString, address);
        QFETCH(QString, status);

        Interface pages;
        pages.load();
        // The list is filled before the controller decides.
        pages.orb.headsets.fill({{"A", address, false, false}});
        pages.orb.reconnectSerial = awaited;
        emit pages.orb.showVrList(false, false);
        QCOMPARE(pages.text("headsetPage", "status"), status);
        QVERIFY(pages.is("headsetPage", "mark",
                         status == zh("连接中") ? "StatusMark.Busy" : "StatusMark.Attention"));

        // Whoever comes in its place is not awaited.
        pages.orb.headsets.fill({{"C", "1.2.3.5", false, false}});
        QCOMPARE(pages.text("headsetPage", "status"), zh("请选择眼镜连接"));
    }

    void nobodyIsConnectedWhenOneOfTwoLeaves()
    {
        Interface pages;
        pages.load();
        pages.orb.headsets.fill({{"A", "1.2.3.4", false, false}, {"B", "1.2.3.5", false, false}});
        emit pages.orb.showVrList(false, false);
        QCOMPARE(pages.text("headsetPage", "status"), zh("请选择设备连接"));
        pages.orb.headsets.fill({{"B", "1.2.3.5", false, false}});
        emit pages.orb.showVrList(false, false);
        QCOMPARE(pages.text("headsetPage", "status"), zh("请选择眼镜连接"));
    }

    void chosenHeadsetIsConnectedAtOnce()
    {
        Interface pages;
        pages.load();
        pages.orb.headsets.fill({{"B", "1.2.3.5", false, false}});
        emit pages.orb.showVrList(false, true);
        pages.settle();
        pages.orb.onCall = [&](const QString &call) {
            if (call.startsWith("connectVR"))
                pages.orb.reconnectSerial = "B";
        };
        pages.click(pages.button(zh("连接"), pages.item("headsets")));
        QCOMPARE(pages.text("headsetPage", "status"), zh("连接中"));
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

    void listShowsNameAddressAndMark()
    {
        Interface pages;
        pages.load();
        pages.orb.headsets.fill({{"D3A0017C4B2F91", "192.168.1.23", true, true},
                                 {"D2B1118C7A0E04", "192.168.1.42", false, false}});
        pages.settle();
        QCOMPARE(Interface::texts(pages.item("headsets")),
                 (QStringList{"D3A0017C4B2F91", "192.168.1.23", zh("上次使用"), zh("已连接"),
                              "D2B1118C7A0E04", "192.168.1.42", zh("连接")}));
        QVERIFY(Interface::texts(pages.item("headsetPage")).contains(zh("可用的VR眼镜")));
    }

    void listIsHiddenWhileEmptyOrWired()
    {
        Interface pages;
        pages.load();
        QVERIFY(!pages.shown("headsets"));
        QVERIFY(!Interface::texts(pages.item("headsetPage")).contains(zh("可用的VR眼镜")));
        pages.orb.headsets.fill({{"D3A0017C4B2F91", "192.168.1.23", false, false}});
        QVERIFY(pages.shown("headsets"));
        pages.orb.becomeWired(true);
        QVERIFY(!pages.shown("headsets"));
        QVERIFY(!Interface::texts(pages.item("headsetPage")).contains(zh("可用的VR眼镜")));
    }

    void rowConnectsAndDisconnects()
    {
        Interface pages;
        pages.load();
        pages.orb.headsets.fill({{"D3A0017C4B2F91", "192.168.1.23", true, true},
                                 {"D2B1118C7A0E04", "192.168.1.42", false, false}});
        pages.orb.calls.clear();
        pages.settle();
        pages.click(pages.button(zh("连接"), pages.item("headsets")));
        pages.click(pages.button(zh("已连接"), pages.item("headsets")));
        QCOMPARE(pages.orb.calls, (QStringList{"connectVR 'D2B1118C7A0E04' '192.168.1.42' true",
                                               "connectVR 'D3A0017C4B2F91' '192.168.1.23' false"}));
    }

    void toastComesBeforeTheConnection()
    {
        Interface pages;
        pages.load();
        pages.orb.headsets.fill({{"D2B1118C7A0E04", "192.168.1.42", false, false}});
        pages.settle();
        QString toastAtCall;
        pages.orb.onCall = [&](const QString &) { toastAtCall = pages.text("toastContent"); };

        pages.click(pages.button(zh("连接"), pages.item("headsets")));

        QCOMPARE(toastAtCall, zh("连接设备中，请稍后"));
        QVERIFY(qobject_cast<QQuickWindow *>(pages.find("toast"))->isVisible());
        QCOMPARE(pages.find("toastTimer")->property("interval").toInt(), 2000);
    }

    void stopEndsTheStreaming()
    {
        Interface pages;
        pages.load();
        QVERIFY(!pages.shown("stopStreaming"));
        pages.orb.becomeConnected(true);
        QVERIFY(pages.shown("stopStreaming"));
        QCOMPARE(pages.text("stopStreaming"), zh("停止串流"));
        pages.orb.calls.clear();
        pages.click("stopStreaming");
        QCOMPARE(pages.orb.calls, QStringList("connectVR '' '' false"));
    }

    void switchButtonNamesTheOtherMode()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.text("switchMode"), zh("切换为有线串流"));
        pages.orb.becomeWired(true);
        QCOMPARE(pages.text("switchMode"), zh("切换为无线串流"));
    }

    void onlyOneHeadsetIsOffered_data()
    {
        QTest::addColumn<QList<bool>>("recent");
        QTest::addColumn<QString>("offered");

        QTest::newRow("none of before") << QList<bool>{false, false, false} << "0";
        QTest::newRow("one of before") << QList<bool>{false, true, false} << "1";
        QTest::newRow("the last") << QList<bool>{false, false, true} << "2";
        QTest::newRow("a single one") << QList<bool>{false} << "0";
    }
    void onlyOneHeadsetIsOffered()
    {
        QFETCH(QList<bool>, recent);
        QFETCH(QString, offered);

        Interface pages;
        pages.load();
        std::vector<FakeHeadsets::Row> rows;
        for (int i = 0; i < recent.size(); ++i)
            rows.push_back({QString::number(i), "1.2.3.4", false, recent[i]});
        pages.orb.headsets.fill(rows);
        pages.settle();
        QStringList primary;
        for (QQuickItem *item : Interface::shownItems(pages.item("headsets"))) {
            if (item->property("primary").toBool())
                primary.append(item->parentItem()->parentItem()->property("name").toString());
        }
        QCOMPARE(primary, QStringList(offered));
    }

    void badgeNamesTheLink()
    {
        Interface pages;
        pages.load();
        QCOMPARE(Interface::texts(pages.item("linkBadge")), QStringList(zh("无线")));
        pages.orb.becomeWired(true);
        QCOMPARE(Interface::texts(pages.item("linkBadge")), QStringList(zh("有线")));
    }

    void roadSaysWhatIsWaitedFor()
    {
        Interface pages;
        pages.load();
        const QDateTime noon({2024, 1, 1}, {12, 0, 5});
        QCOMPARE(Interface::texts(pages.item("roadStrip")), QStringList(zh("正在等待：Steam")));
        pages.road.update({true, true, false, false, false}, noon);
        QCOMPARE(Interface::texts(pages.item("roadStrip")),
                 QStringList(zh("正在等待：串流服务（自 12:00:05）")));
        QStringList marks;
        for (QQuickItem *item : Interface::shownItems(pages.item("roadStrip"))) {
            if (item->inherits("QQuickImage"))
                marks.append(item->property("source").toUrl().fileName());
        }
        QCOMPARE(marks, (QStringList{"orb_suc.png", "orb_suc.png", "orb_current.png",
                                     "orb_todo.png", "orb_todo.png"}));

        pages.orb.becomeConnected(true);
        QVERIFY(!pages.shown("roadStrip"));
    }

    void detailsAreBehindTheTab()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeConnected(true);
        QCOMPARE(pages.item("sheet")->y(), 90.0 + 56 + 22);
        QCOMPARE(pages.item("sheet")->height(), 875.0 - 168 - 30);
        QCOMPARE(pages.item("systemPage")->width(), pages.item("steamPage")->width());
        QVERIFY(pages.item("headsetPage")->width() - pages.item("systemPage")->width() <= 2);
        QCOMPARE(pages.item("headsetPage")->mapToScene(QPointF()).x() +
                     pages.item("headsetPage")->width(),
                 1360.0 - 30);
        QVERIFY(!pages.item("details")->property("item").value<QObject *>());
        QCOMPARE(pages.text("tabArrow", "source"),
                 QStringLiteral("qrc:/res/image/orb_arrow_down.png"));
        QCOMPARE(pages.item("drawerTab")->size(), QSizeF(60, 16));

        pages.click("drawerTab");
        QVERIFY(pages.window()->property("ispullDown").toBool());
        QCOMPARE(pages.item("sheet")->y(), 90.0 + 56 + 488);
        QCOMPARE(pages.item("sheet")->height(), 875.0 - 634 - 30);
        for (const char *card : {"systemPage", "steamPage", "headsetPage"}) {
            const QRectF place = pages.item(card)->mapRectToScene(pages.item(card)->boundingRect());
            QCOMPARE(place.top(), 634.0);
            QCOMPARE(place.bottom(), 875.0 - 30);
        }
        QVERIFY(pages.shown("details"));
        QVERIFY(pages.item("details")->property("item").value<QObject *>());
        QCOMPARE(pages.text("tabArrow", "source"),
                 QStringLiteral("qrc:/res/image/orb_arrow_up.png"));
        // How things are stays in sight, and so does what ends them.
        QVERIFY(Interface::texts(pages.item("headsetPage"))
                    .contains(zh("已连接，戴上眼镜开始串流吧！")));
        QVERIFY(pages.shown("stopStreaming"));
        QVERIFY(!pages.shown("steamItem"));

        pages.click("drawerTab");
        QVERIFY(!pages.window()->property("ispullDown").toBool());
        QCOMPARE(pages.item("sheet")->y(), 168.0);
        QVERIFY(pages.shown("steamItem"));
    }

    void detailsTakeTheSamePlaceWithoutBanner()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeConnected(true);
        pages.click("bannerHide");
        QCOMPARE(pages.item("sheet")->y(), 90.0 + 22);
        pages.click("drawerTab");
        QCOMPARE(pages.item("sheet")->y(), 90.0 + 488 + 56);
    }

    void tabIsThereOnlyWhileConnected()
    {
        Interface pages;
        pages.load();
        QVERIFY(!pages.shown("drawerTab"));
        pages.orb.becomeConnected(true);
        QVERIFY(pages.shown("drawerTab"));
        pages.click("drawerTab");
        pages.orb.becomeConnected(false);
        QVERIFY(!pages.shown("drawerTab"));
        QVERIFY(!pages.window()->property("ispullDown").toBool());
        pages.orb.becomeConnected(true);
        QVERIFY(!pages.window()->property("ispullDown").toBool());
    }

    void detailsShowEveryStageSinceWhen()
    {
        Interface pages;
        pages.load();
        const QDateTime noon({2024, 1, 1}, {12, 0, 5});
        pages.orb.becomeConnected(true);
        pages.road.update({true, false, false, false, false}, noon);
        pages.click("drawerTab");
        pages.road.update({true, true, false, false, false}, noon.addSecs(10));
        pages.settle();
        QCOMPARE(Interface::texts(pages.item("roadList")),
                 (QStringList{"Steam", zh("已就绪"), zh("自 12:00:05"), "SteamVR", zh("已就绪"),
                              zh("自 12:00:15"), zh("串流服务"), zh("等待中"), zh("自 12:00:05"),
                              zh("VR眼镜"), zh("未就绪"), zh("自 12:00:05"), zh("串流连接"),
                              zh("未就绪"), zh("自 12:00:05")}));
    }

    void detailsShowWhatIsStreamed_data()
    {
        QTest::addColumn<bool>("wired");
        QTest::addColumn<int>("fps");
        QTest::addColumn<QStringList>("values");
        QTest::newRow("wireless, 90 Hz")
            << false << 1
            << QStringList{zh("眼镜ID：4B2F91"), zh("无线（Wi-Fi）"), "90 Hz", "50 Mbps"};
        QTest::newRow("wired, 72 Hz")
            << true << 0
            << QStringList{zh("眼镜ID：4B2F91"), zh("有线（USB）"), "72 Hz", "50 Mbps"};
    }
    void detailsShowWhatIsStreamed()
    {
        QFETCH(bool, wired);
        QFETCH(int, fps);
        QFETCH(QStringList, values);

        Interface pages;
        pages.load();
        pages.orb.becomeWired(wired);
        FakeOrb::Settings settings;
        settings.fps = fps;
        pages.orb.becomeSettings(settings);
        pages.orb.becomeConnected(true, zh("眼镜ID：4B2F91"));
        pages.click("drawerTab");
        pages.settle();
        QStringList found;
        for (QQuickItem *item : Interface::shownItems(pages.item("details"))) {
            if (item->metaObject()->indexOfProperty("value") >= 0)
                found.append(item->property("value").toString());
        }
        QCOMPARE(found, values);
    }

    void stepsFollowTheLink_data()
    {
        QTest::addColumn<bool>("wired");
        QTest::addColumn<bool>("enumerated");
        QTest::addColumn<QString>("firstStep");

        QTest::newRow("wireless") << false << false
                                  << zh("将电脑和VR眼镜接入同一个路由器，电脑建议使用网线");
        QTest::newRow("wired, nothing plugged in") << true << false << zh("确认数据线支持USB 3.0");
        QTest::newRow("wired") << true << true << zh("用USB 3.0数据线连接电脑和VR眼镜");
    }
    void stepsFollowTheLink()
    {
        QFETCH(bool, wired);
        QFETCH(bool, enumerated);
        QFETCH(QString, firstStep);

        Interface pages;
        pages.load();
        pages.orb.becomeWired(wired);
        pages.orb.becomeEnumerated(enumerated);
        QCOMPARE(Interface::texts(pages.item("steps")).mid(0, 3),
                 (QStringList{zh("连接步骤"), "1.", firstStep}));
        pages.orb.becomeConnected(true);
        QVERIFY(!pages.shown("steps"));
    }

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
};

KOLM_GUI_TEST_MAIN(TestCards)
#include "tst_cards.moc"
