#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

// The headsets that are listed in their card.
class TestHeadsetList : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

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
};

KOLM_GUI_TEST_MAIN(TestHeadsetList)
#include "tst_headset_list.moc"
