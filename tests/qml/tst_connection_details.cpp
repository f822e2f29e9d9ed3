#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

// What lies behind the cards, and the tab that leads to it.
class TestConnectionDetails : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

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
        pages.stages.update({true, false, false, false, false}, noon);
        pages.click("drawerTab");
        pages.stages.update({true, true, false, false, false}, noon.addSecs(10));
        pages.settle();
        QCOMPARE(Interface::texts(pages.item("stageList")),
                 (QStringList{"Steam", zh("已就绪"), zh("自 12:00:05"), "SteamVR", zh("已就绪"),
                              zh("自 12:00:15"), zh("串流服务"), zh("等待中"), zh("自 12:00:05"),
                              zh("VR眼镜"), zh("未就绪"), zh("自 12:00:05"), zh("串流连接"),
                              zh("未就绪"), zh("自 12:00:05")}));
    }

    void detailsShowWhoIsConnected()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeConnected(true);
        pages.click("drawerTab");
        QVERIFY(!pages.shown("serverProgram"));
        pages.orb.connection.setServerProgram("vrserver.exe (4711)");
        pages.settle();
        QVERIFY(pages.shown("serverProgram"));
        QCOMPARE(Interface::texts(pages.item("serverProgram")),
                 (QStringList{zh("串流服务程序"), "vrserver.exe (4711)"}));
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
};

KOLM_GUI_TEST_MAIN(TestConnectionDetails)
#include "tst_connection_details.moc"
