#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

// Several headsets were found, and the user picks one.
class TestHeadsetChoice : public TestCase
{
    Q_OBJECT

    static void open(Interface &pages)
    {
        QVERIFY(pages.load());
        pages.orb.headsets.fill({{"A", "10.0.0.1", false, true}, {"B", "10.0.0.2", false, false}});
        emit pages.orb.showMoreHMD();
        QVERIFY(pages.dialog());
        pages.settle();
        pages.orb.calls.clear();
        pages.dialog()->requestActivate();
        QTRY_VERIFY(pages.dialog()->isActive());
    }
    static QString headline(Interface &pages)
    {
        return pages.inDialog("headline")->property("text").toString();
    }

private slots:
    void initTestCase() { registerInterface(); }

    void chosenHeadsetIsConnectedAfterTheToast_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("mouse") << false;
        QTest::newRow("keys") << true;
    }
    void chosenHeadsetIsConnectedAfterTheToast()
    {
        QFETCH(bool, byKey);
        Interface pages;
        open(pages);
        QString toast;
        bool shown = true;
        pages.orb.onCall = [&](const QString &) {
            toast = pages.text("toastContent");
            shown = pages.dialog() != nullptr;
        };
        if (byKey) {
            QTest::keyClick(pages.dialog(), Qt::Key_Down);
            QTest::keyClick(pages.dialog(), Qt::Key_Return);
        } else {
            QList<QQuickItem *> buttons;
            for (QQuickItem *item : Interface::shownItems(pages.inDialog("headsets"))) {
                if (item->property("text").toString() == zh("连接") &&
                    item->metaObject()->indexOfSignal("clicked()") >= 0)
                    buttons.append(item);
            }
            QCOMPARE(buttons.size(), 2);
            pages.click(buttons.at(1));
        }
        QCOMPARE(pages.orb.calls, QStringList("connectVR 'B' '10.0.0.2' true"));
        QCOMPARE(toast, zh("连接设备中，请稍后"));
        QVERIFY(!shown);
    }

    void connectedHeadsetIsDisconnected()
    {
        Interface pages;
        open(pages);
        pages.orb.headsets.fill({{"A", "10.0.0.1", true, true}, {"B", "10.0.0.2", false, false}});
        pages.settle();
        QTest::keyClick(pages.dialog(), Qt::Key_Space);
        QCOMPARE(pages.orb.calls, QStringList("connectVR 'A' '10.0.0.1' false"));
    }

    void listFollowsThePoll()
    {
        Interface pages;
        open(pages);
        QCOMPARE(headline(pages), zh("发现多个VR眼镜，请选择要连接的眼镜"));
        pages.orb.headsets.fill({{"B", "10.0.0.2", false, false}});
        pages.settle();
        QCOMPARE(headline(pages), zh("请选择要连接的眼镜"));
        QCOMPARE(pages.inDialog("headsets")->property("count").toInt(), 1);
    }

    void focusStaysOnTheHeadset()
    {
        Interface pages;
        open(pages);
        QTest::keyClick(pages.dialog(), Qt::Key_Down);
        pages.orb.headsets.fill({{"C", "10.0.0.3", false, false},
                                 {"A", "10.0.0.1", false, true},
                                 {"B", "10.0.0.2", false, false}});
        pages.settle();
        QTest::keyClick(pages.dialog(), Qt::Key_Return);
        QCOMPARE(pages.orb.calls, QStringList("connectVR 'B' '10.0.0.2' true"));
    }

    void choiceEndsWhenAHeadsetIsConnected()
    {
        Interface pages;
        open(pages);
        pages.orb.becomeConnected(true);
        QVERIFY(!pages.dialog());
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void lossOfTheConnectionKeepsTheChoice()
    {
        Interface pages;
        open(pages);
        pages.orb.becomeConnected(false);
        QVERIFY(pages.dialog());
    }

    void settingsTakeItsPlace()
    {
        Interface pages;
        open(pages);
        pages.click(pages.inDialog("settings"));
        QVERIFY(pages.dialog());
        QCOMPARE(pages.dialogFile(), QString("SettingPage.qml"));
    }

    void emptyListSearches()
    {
        Interface pages;
        open(pages);
        pages.orb.headsets.fill({});
        pages.settle();
        QVERIFY(pages.inDialog("searching"));
        QCOMPARE(headline(pages), zh("搜索中"));
        QVERIFY(!pages.inDialog("headsets"));
        QVERIFY(pages.inDialog("cancel")->hasActiveFocus());
        pages.orb.headsets.fill({{"B", "10.0.0.2", false, false}});
        pages.settle();
        QVERIFY(!pages.inDialog("searching"));
        QVERIFY(pages.inDialog("headsets")->hasActiveFocus());
    }
};

KOLM_GUI_TEST_MAIN(TestHeadsetChoice)
#include "tst_headset_choice.moc"
