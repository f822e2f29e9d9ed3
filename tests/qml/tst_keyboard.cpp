#include "tests/qml/accessibility.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QAccessible>

// Everything can be done without a mouse and is named for those who cannot see.
class TestKeyboard : public TestCase
{
    Q_OBJECT

    // The names of all controls in the order of the tabulator, each of which
    // must show that it has the focus.
    static QStringList walk(Interface &pages)
    {
        QStringList names;
        for (int i = 0; i < 40; ++i) {
            QTest::keyClick(pages.window(), Qt::Key_Tab);
            QQuickItem *item = pages.window()->activeFocusItem();
            const QString name = accessibleName(item);
            if (!names.isEmpty() && name == names.first())
                break;
            names.append(hasRing(item) ? name : name + " (without ring)");
        }
        return names;
    }

private slots:
    void initTestCase() { registerInterface(); }

    void tabReachesEveryControl()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeSteamState(FakeOrb::Pass);
        pages.orb.becomeSteam(true);
        pages.orb.becomeConnected(true);
        pages.orb.headsets.fill({{"A", "10.0.0.1", true, true}, {"B", "10.0.0.2", false, false}});
        pages.activate();

        QCOMPARE(walk(pages),
                 (QStringList{zh("使用帮助"), zh("用户反馈"), zh("设置"), zh("最小化"), zh("关闭"),
                              zh("不再提示"), zh("展开连接详情"), zh("查看更多配置"), zh("启动"),
                              zh("Steam VR检测不到设备？"), zh("A 上次使用"), zh("停止串流"),
                              zh("切换为有线串流")}));
    }

    void tabReachesBothModes()
    {
        Interface pages;
        pages.orb.hideSelectPage = false;
        pages.load();
        pages.activate();
        QCOMPARE(accessibleName(pages.window()->activeFocusItem()), zh("有线串流"));
        QTest::keyClick(pages.window(), Qt::Key_Tab);
        QCOMPARE(accessibleName(pages.window()->activeFocusItem()), zh("无线串流"));
        QVERIFY(hasRing(pages.window()->activeFocusItem()));
        pages.orb.calls.clear();
        QTest::keyClick(pages.window(), Qt::Key_Return);
        QCOMPARE(pages.orb.calls, (QStringList{"wired=false", "reportstreamMode false false"}));
    }

    void keysPressTheControl_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("call");

        for (int key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
            QTest::addRow("button %x", key) << "help" << key << "gotoWeb 1";
            QTest::addRow("link %x", key) << "steamHelp" << key << "gotoWeb 2";
            QTest::addRow("icon %x", key) << "close" << key << "closeApp";
        }
    }
    void keysPressTheControl()
    {
        QFETCH(QString, name);
        QFETCH(int, key);
        QFETCH(QString, call);

        Interface pages;
        pages.load();
        pages.activate();
        pages.orb.calls.clear();
        pages.item(name)->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(pages.window(), Qt::Key(key));
        QCOMPARE(pages.orb.calls, QStringList(call));
    }

    void disabledButtonsArePassedOver()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeSteam(true);
        pages.orb.becomeSteamVR(true);
        pages.activate();
        QVERIFY(!walk(pages).join('|').contains(zh("已启动")));
    }

    void arrowsChooseAHeadset()
    {
        Interface pages;
        pages.load();
        pages.orb.headsets.fill({{"A", "10.0.0.1", false, false},
                                 {"B", "10.0.0.2", false, false},
                                 {"C", "10.0.0.3", true, false}});
        pages.activate();
        pages.item("headsets")->forceActiveFocus(Qt::TabFocusReason);
        pages.orb.calls.clear();

        QTest::keyClick(pages.window(), Qt::Key_Down);
        QTest::keyClick(pages.window(), Qt::Key_Return);
        QTest::keyClick(pages.window(), Qt::Key_Down);
        QTest::keyClick(pages.window(), Qt::Key_Space);

        QCOMPARE(pages.orb.calls,
                 (QStringList{"connectVR 'B' '10.0.0.2' true", "connectVR 'C' '10.0.0.3' false"}));
    }

    void chosenHeadsetIsToldToThoseWhoCannotSee()
    {
        Interface pages;
        pages.load();
        pages.orb.headsets.fill({{"A", "10.0.0.1", false, false}, {"B", "10.0.0.2", false, false}});
        pages.activate();
        pages.settle();
        const auto selected = [&pages] {
            QStringList names;
            for (QQuickItem *item : Interface::shownItems(pages.item("headsets"))) {
                QAccessibleInterface *const row = QAccessible::queryAccessibleInterface(item);
                if (!row || row->role() != QAccessible::ListItem)
                    continue;
                const QAccessible::State state = row->state();
                if (!state.focusable || !state.selectable)
                    names << "out of reach";
                if (state.selected)
                    names << row->text(QAccessible::Name);
            }
            return names;
        };
        QCOMPARE(selected(), QStringList());
        pages.item("headsets")->forceActiveFocus(Qt::TabFocusReason);
        QCOMPARE(selected(), QStringList("A"));
        QTest::keyClick(pages.window(), Qt::Key_Down);
        QCOMPARE(selected(), QStringList("B"));
    }

    void chosenHeadsetStaysChosenWhenTheListIsFilledAnew()
    {
        Interface pages;
        pages.load();
        pages.orb.headsets.fill({{"A", "10.0.0.1", false, false}, {"B", "10.0.0.2", false, false}});
        pages.activate();
        pages.item("headsets")->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(pages.window(), Qt::Key_Down);

        pages.orb.headsets.fill({{"C", "10.0.0.3", false, false},
                                 {"A", "10.0.0.1", false, false},
                                 {"B", "10.0.0.2", false, false}});
        pages.settle();

        QVERIFY(pages.item("headsets")->hasActiveFocus());
        QVERIFY(hasRing(pages.item("headsets")));
        pages.orb.calls.clear();
        QTest::keyClick(pages.window(), Qt::Key_Return);
        QCOMPARE(pages.orb.calls, QStringList("connectVR 'B' '10.0.0.2' true"));
    }

    void clickLeavesNoRing()
    {
        Interface pages;
        pages.load();
        pages.activate();
        pages.click("help");
        QVERIFY(!hasRing(pages.window()->contentItem()));
    }

    void everythingThatCanBePressedHasAName_data()
    {
        QTest::addColumn<bool>("firstRun");
        QTest::newRow("first run") << true;
        QTest::newRow("later") << false;
    }
    void everythingThatCanBePressedHasAName()
    {
        QFETCH(bool, firstRun);

        Interface pages;
        pages.orb.hideSelectPage = !firstRun;
        pages.load();
        pages.orb.becomeSteamState(FakeOrb::Pass);
        pages.orb.headsets.fill({{"A", "10.0.0.1", false, true}});
        pages.settle();

        int pressable = 0;
        for (QQuickItem *item : Interface::shownItems(pages.window()->contentItem())) {
            if (!item->inherits("QQuickMouseArea"))
                continue;
            ++pressable;
            QVERIFY2(!accessibleName(item->parentItem()).isEmpty(),
                     qPrintable("without a name: " + item->parentItem()->objectName()));
        }
        QVERIFY(pressable >= (firstRun ? 5 : 9));
    }
};

KOLM_GUI_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
