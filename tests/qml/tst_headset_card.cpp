#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

// The card of the headset: how its connection stands, and what to do about that.
class TestHeadsetCard : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

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

    void badgeNamesTheLink()
    {
        Interface pages;
        pages.load();
        QCOMPARE(Interface::texts(pages.item("linkBadge")), QStringList(zh("无线")));
        pages.orb.becomeWired(true);
        QCOMPARE(Interface::texts(pages.item("linkBadge")), QStringList(zh("有线")));
    }

    void stagesSayWhatIsWaitedFor()
    {
        Interface pages;
        pages.load();
        const QDateTime noon({2024, 1, 1}, {12, 0, 5});
        QCOMPARE(Interface::texts(pages.item("stageStrip")), QStringList(zh("正在等待：Steam")));
        pages.stages.update({true, true, false, false, false}, noon);
        QCOMPARE(Interface::texts(pages.item("stageStrip")),
                 QStringList(zh("正在等待：串流服务（自 12:00:05）")));
        QStringList marks;
        for (QQuickItem *item : Interface::shownItems(pages.item("stageStrip"))) {
            if (item->inherits("QQuickImage"))
                marks.append(item->property("source").toUrl().fileName());
        }
        QCOMPARE(marks, (QStringList{"orb_suc.png", "orb_suc.png", "orb_current.png",
                                     "orb_todo.png", "orb_todo.png"}));

        pages.orb.becomeConnected(true);
        QVERIFY(!pages.shown("stageStrip"));
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
};

KOLM_GUI_TEST_MAIN(TestHeadsetCard)
#include "tst_headset_card.moc"
