#include "tests/qml/accessibility.h"
#include "tests/qml/dialog_states.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

namespace {

constexpr qreal smallestTarget = 32;

} // namespace

// Dialogs can be worked without a mouse, and are named for those who cannot see.
class TestDialogKeyboard : public TestCase
{
    Q_OBJECT

    static void show(Interface &pages, const QString &state)
    {
        showDialog(pages, state);
        pages.dialog()->requestActivate();
        QTRY_VERIFY(pages.dialog()->isActive());
    }
    static QString focused(Interface &pages)
    {
        QQuickItem *item = pages.dialog()->activeFocusItem();
        return hasRing(item) ? accessibleName(item) : accessibleName(item) + " (without ring)";
    }
    // What can be worked with the mouse, other than a whole window.
    static QList<QQuickItem *> pressable(Interface &pages)
    {
        QList<QQuickItem *> found;
        for (QQuickItem *item : Interface::shownItems(pages.dialog()->contentItem())) {
            if (item->inherits("QQuickMouseArea") && item->isEnabled())
                found.append(item->parentItem());
        }
        return found;
    }

private slots:
    void initTestCase() { registerInterface(); }

    void tabulatorGoesRound_data()
    {
        QTest::addColumn<QString>("state");
        QTest::addColumn<QStringList>("stops"); // the first one has the focus at first

        const QString close = zh("关闭");
        QTest::newRow("power") << "power" << QStringList{zh("知道了"), close};
        QTest::newRow("network") << "network"
                                 << QStringList{zh("打开网络设置"), close, zh("以后再说")};
        QTest::newRow("driver") << "driver" << QStringList{zh("知道了"), close, zh("使用帮助")};
        QTest::newRow("ports") << "ports" << QStringList{zh("重新检测"), close, zh("以后再说")};
        QTest::newRow("many ports")
            << "ports, many"
            << QStringList{zh("重新检测"), close, zh("占用端口的程序"), zh("以后再说")};
        QTest::newRow("confirm") << "confirm wired" << QStringList{zh("确定"), close, zh("取消")};
        QTest::newRow("system") << "system" << QStringList{zh("确定"), close, zh("更改记录")};
        QTest::newRow("update") << "update" << QStringList{zh("立即更新"), close, zh("以后再说")};
        QTest::newRow("forced update")
            << "update, forced" << QStringList{zh("立即更新"), zh("更新内容"), zh("退出")};
        QTest::newRow("headsets") << "headsets"
                                  << QStringList{zh("D3A0017C4B2F91AA55 上次使用"), zh("串流设置"),
                                                 zh("以后再说"), close};
        QTest::newRow("feedback") << "feedback"
                                  << QStringList{zh("问题或建议"), zh("联系方式（选填）"),
                                                 zh("取消"), close};
        QTest::newRow("written feedback")
            << "feedback, full"
            << QStringList{zh("问题或建议"), zh("联系方式（选填）"), zh("取消"), zh("提交"), close};
        QTest::newRow("settings") << "settings, standard"
                                  << QStringList{zh("标准"),   "90 Hz",        "HEVC",
                                                 zh("麦克风"), zh("使用情况"), zh("取消"),
                                                 zh("确定"),   close};
        QTest::newRow("custom settings")
            << "settings, custom"
            << QStringList{zh("自定义"), zh("渲染比例"), zh("码率（有线）"), "90 Hz",    "AV1",
                           zh("麦克风"), zh("使用情况"), zh("取消"),         zh("确定"), close};
    }
    void tabulatorGoesRound()
    {
        QFETCH(QString, state);
        QFETCH(QStringList, stops);

        Interface pages;
        show(pages, state);
        QStringList forward;
        for (int i = 0; i < stops.size(); ++i) {
            forward.append(focused(pages));
            QTest::keyClick(pages.dialog(), Qt::Key_Tab);
        }
        QCOMPARE(forward, stops);
        QCOMPARE(focused(pages), stops.first());
        for (int i = stops.size() - 1; i >= 0; --i) {
            QTest::keyClick(pages.dialog(), Qt::Key_Backtab, Qt::ShiftModifier);
            QCOMPARE(focused(pages), stops.at(i));
        }
        QCOMPARE(pages.orb.calls, QStringList());
    }

    void focusIsSeenFromTheStart_data() { dialogRows(); }
    void focusIsSeenFromTheStart()
    {
        QFETCH(QString, state);
        Interface pages;
        show(pages, state);
        if (pages.dialogFile() == "WaitPage.qml") // there is nothing to do in it
            return;
        QVERIFY2(!focused(pages).contains("(without ring)"), qPrintable(focused(pages)));
    }

    void everythingThatCanBePressedHasANameAndARole_data() { dialogRows(); }
    void everythingThatCanBePressedHasANameAndARole()
    {
        QFETCH(QString, state);
        Interface pages;
        show(pages, state);
        for (QQuickItem *item : pressable(pages)) {
            QVERIFY2(!accessibleName(item).isEmpty(), item->metaObject()->className());
            QVERIFY2(accessible(item, "role").toInt() != 0, qPrintable(accessibleName(item)));
        }
    }

    void targetsAreLargeEnough_data() { dialogRows(); }
    void targetsAreLargeEnough()
    {
        QFETCH(QString, state);
        Interface pages;
        show(pages, state);
        for (QQuickItem *item : pressable(pages)) {
            const QString size = QStringLiteral("%1: %2 x %3")
                                     .arg(accessibleName(item))
                                     .arg(item->width())
                                     .arg(item->height());
            QVERIFY2(item->width() >= smallestTarget && item->height() >= smallestTarget,
                     qPrintable(size));
        }
    }

    void longTextsScrollByKeys()
    {
        Interface pages;
        show(pages, "update, forced");
        QQuickItem *note = pages.inDialog("note");
        note->forceActiveFocus(Qt::TabFocusReason);
        const auto y = [&] { return note->property("contentY").toReal(); };
        QTest::keyClick(pages.dialog(), Qt::Key_Down);
        QCOMPARE(y(), 32.0);
        QTest::keyClick(pages.dialog(), Qt::Key_Up);
        QTest::keyClick(pages.dialog(), Qt::Key_Up);
        QCOMPARE(y(), 0.0);
        QTest::keyClick(pages.dialog(), Qt::Key_End);
        const qreal end = y();
        QVERIFY(end > 100);
        QTest::keyClick(pages.dialog(), Qt::Key_PageDown);
        QCOMPARE(y(), end);
        QTest::keyClick(pages.dialog(), Qt::Key_PageUp);
        QVERIFY(y() < end - 100);
        QTest::keyClick(pages.dialog(), Qt::Key_Home);
        QCOMPARE(y(), 0.0);
    }

    void shortTextsAreNoStop()
    {
        Interface pages;
        show(pages, "update");
        QVERIFY(!pages.inDialog("note")->activeFocusOnTab());
        QVERIFY(!pages.inDialog("scrollBar"));
    }

    void choicesTellWhatIsChosen()
    {
        Interface pages;
        show(pages, "settings, standard");
        for (int value : {0, 1}) {
            QQuickItem *item = pages.option("fps", value);
            QCOMPARE(accessible(item, "checked").toBool(), value == 1);
            QCOMPARE(accessible(item, "description").toString(), zh("帧率"));
        }
    }

    void slidersTellTheirValue()
    {
        Interface pages;
        show(pages, "settings, custom");
        auto *track = pages.inDialog("bitRate")->findChild<QQuickItem *>("track");
        QCOMPARE(track->property("value").toInt(), 50);
        QCOMPARE(track->property("minimumValue").toInt(), 10);
        QCOMPARE(track->property("maximumValue").toInt(), 200);
        QCOMPARE(accessible(track, "description").toString(), QString("50 Mbps"));
    }

    void switchesTellTheirState()
    {
        Interface pages;
        show(pages, "settings, standard");
        QQuickItem *audio = pages.inDialog("audio");
        QVERIFY(!accessible(audio, "checked").toBool());
        audio->forceActiveFocus(Qt::TabFocusReason);
        QTest::keyClick(pages.dialog(), Qt::Key_Space);
        QVERIFY(accessible(audio, "checked").toBool());
        QTest::keyClick(pages.dialog(), Qt::Key_Space);
        QVERIFY(!accessible(audio, "checked").toBool());
    }

    void screenReadersCanWorkTheControls()
    {
        Interface pages;
        show(pages, "settings, custom");
        const auto act = [](QQuickItem *item, const char *signal) {
            QObject *attached = nullptr;
            for (QObject *child : item->children()) {
                if (child->inherits("QQuickAccessibleAttached"))
                    attached = child;
            }
            QVERIFY(attached);
            QVERIFY(QMetaObject::invokeMethod(attached, signal));
        };
        act(pages.option("fps", 0), "pressAction");
        QCOMPARE(pages.inDialog("fps")->property("value").toInt(), 0);
        auto *track = pages.inDialog("bitRate")->findChild<QQuickItem *>("track");
        act(track, "increaseAction");
        act(track, "increaseAction");
        act(track, "decreaseAction");
        QCOMPARE(track->property("value").toInt(), 55);
        act(pages.inDialog("audio"), "toggleAction");
        QVERIFY(!pages.inDialog("audio")->property("checked").toBool());
        act(pages.inDialog("cancel"), "pressAction");
        QVERIFY(!pages.dialog());
    }
};

KOLM_GUI_TEST_MAIN(TestDialogKeyboard)
#include "tst_dialog_keyboard.moc"
