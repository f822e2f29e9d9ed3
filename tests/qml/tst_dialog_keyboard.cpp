#include "tests/qml/dialog_states.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QQmlProperty>

namespace {

constexpr qreal smallestTarget = 32;

QString zh(const char *text)
{
    return QString::fromUtf8(text);
}

QVariant accessible(QQuickItem *item, const char *property)
{
    return QQmlProperty::read(item, QStringLiteral("Accessible.") + QLatin1String(property),
                              qmlContext(item));
}

QString nameOf(QQuickItem *item)
{
    return item ? accessible(item, "name").toString() : QStringLiteral("(nothing)");
}

// The ring is drawn by the item or by what it is the inner part of.
bool hasRing(QQuickItem *item)
{
    for (QQuickItem *around = item; around; around = around->parentItem()) {
        const QList<QQuickItem *> children = around->childItems();
        for (QQuickItem *child : children) {
            if (child->objectName() == QLatin1String("focusRing") && child->isVisible())
                return true;
        }
    }
    return false;
}

} // namespace

// Dialogs can be worked without a mouse, and are named for those who cannot see.
class TestDialogKeyboard : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void tabulatorGoesRound_data();
    void tabulatorGoesRound();
    void focusIsSeenFromTheStart_data() { states(); }
    void focusIsSeenFromTheStart();
    void everythingThatCanBePressedHasANameAndARole_data() { states(); }
    void everythingThatCanBePressedHasANameAndARole();
    void targetsAreLargeEnough_data() { states(); }
    void targetsAreLargeEnough();
    void longTextsScrollByKeys();
    void shortTextsAreNoStop();
    void choicesTellWhatIsChosen();
    void slidersTellTheirValue();
    void switchesTellTheirState();
    void screenReadersCanWorkTheControls();

private:
    static void states()
    {
        QTest::addColumn<int>("state");
        for (int state = 0; state < int(dialogStates().size()); ++state)
            QTest::addRow("%s", dialogStates()[size_t(state)].name) << state;
    }
    static void show(Interface &pages, const QString &name)
    {
        QVERIFY(pages.load());
        for (const DialogState &state : dialogStates()) {
            if (name == QLatin1String(state.name))
                state.show(pages);
        }
        QVERIFY(pages.dialog());
        pages.settle();
        pages.dialog()->requestActivate();
        QTRY_VERIFY(pages.dialog()->isActive());
        pages.orb.calls.clear();
    }
    static void show(Interface &pages, int state)
    {
        show(pages, QLatin1String(dialogStates()[size_t(state)].name));
    }
    static QString focused(Interface &pages)
    {
        QQuickItem *item = pages.dialog()->activeFocusItem();
        return hasRing(item) ? nameOf(item) : nameOf(item) + " (without ring)";
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
    static QQuickItem *option(Interface &pages, const QString &setting, int value)
    {
        for (QQuickItem *item : Interface::shownItems(pages.inDialog(setting))) {
            if (item->objectName() == QStringLiteral("option%1").arg(value))
                return item;
        }
        return nullptr;
    }
};

void TestDialogKeyboard::tabulatorGoesRound_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<QStringList>("stops"); // the first one has the focus at first

    const QString close = zh("关闭");
    QTest::newRow("power") << "power" << QStringList{zh("知道了"), close};
    QTest::newRow("network") << "network" << QStringList{zh("打开网络设置"), close, zh("以后再说")};
    QTest::newRow("driver") << "driver" << QStringList{zh("知道了"), close, zh("使用帮助")};
    QTest::newRow("ports") << "ports" << QStringList{zh("重新检测"), close, zh("以后再说")};
    QTest::newRow("many ports") << "ports, many"
                                << QStringList{zh("重新检测"), close, zh("占用端口的程序"),
                                               zh("以后再说")};
    QTest::newRow("confirm") << "confirm wired" << QStringList{zh("确定"), close, zh("取消")};
    QTest::newRow("system") << "system" << QStringList{zh("确定"), close};
    QTest::newRow("update") << "update" << QStringList{zh("立即更新"), close, zh("以后再说")};
    QTest::newRow("forced update")
        << "update, forced" << QStringList{zh("立即更新"), zh("更新内容"), zh("退出")};
    QTest::newRow("headsets") << "headsets"
                              << QStringList{zh("D3A0017C4B2F91AA55 上次使用"), zh("串流设置"),
                                             zh("以后再说"), close};
    QTest::newRow("feedback") << "feedback"
                              << QStringList{zh("问题或建议"), zh("联系方式（选填）"), zh("取消"),
                                             close};
    QTest::newRow("written feedback")
        << "feedback, full"
        << QStringList{zh("问题或建议"), zh("联系方式（选填）"), zh("取消"), zh("提交"), close};
    QTest::newRow("settings") << "settings, standard"
                              << QStringList{zh("标准"), "90 Hz",    "HEVC", zh("麦克风"),
                                             zh("取消"), zh("确定"), close};
    QTest::newRow("custom settings")
        << "settings, custom"
        << QStringList{zh("自定义"), zh("渲染比例"), zh("码率（有线）"), "90 Hz", "AV1",
                       zh("麦克风"), zh("取消"),     zh("确定"),         close};
}

void TestDialogKeyboard::tabulatorGoesRound()
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

void TestDialogKeyboard::focusIsSeenFromTheStart()
{
    QFETCH(int, state);
    Interface pages;
    show(pages, state);
    if (pages.dialogFile() == "WaitPage.qml") // there is nothing to do in it
        return;
    QVERIFY2(!focused(pages).contains("(without ring)"), qPrintable(focused(pages)));
}

void TestDialogKeyboard::everythingThatCanBePressedHasANameAndARole()
{
    QFETCH(int, state);
    Interface pages;
    show(pages, state);
    for (QQuickItem *item : pressable(pages)) {
        QVERIFY2(!nameOf(item).isEmpty(), item->metaObject()->className());
        QVERIFY2(accessible(item, "role").toInt() != 0, qPrintable(nameOf(item)));
    }
}

void TestDialogKeyboard::targetsAreLargeEnough()
{
    QFETCH(int, state);
    Interface pages;
    show(pages, state);
    for (QQuickItem *item : pressable(pages)) {
        const QString size =
            QStringLiteral("%1: %2 x %3").arg(nameOf(item)).arg(item->width()).arg(item->height());
        QVERIFY2(item->width() >= smallestTarget && item->height() >= smallestTarget,
                 qPrintable(size));
    }
}

void TestDialogKeyboard::longTextsScrollByKeys()
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

void TestDialogKeyboard::shortTextsAreNoStop()
{
    Interface pages;
    show(pages, "update");
    QVERIFY(!pages.inDialog("note")->activeFocusOnTab());
    QVERIFY(!pages.inDialog("scrollBar"));
}

void TestDialogKeyboard::choicesTellWhatIsChosen()
{
    Interface pages;
    show(pages, "settings, standard");
    for (int value : {0, 1}) {
        QQuickItem *item = option(pages, "fps", value);
        QCOMPARE(accessible(item, "checked").toBool(), value == 1);
        QCOMPARE(accessible(item, "description").toString(), zh("帧率"));
    }
}

void TestDialogKeyboard::slidersTellTheirValue()
{
    Interface pages;
    show(pages, "settings, custom");
    auto *track = pages.inDialog("bitRate")->findChild<QQuickItem *>("track");
    QCOMPARE(track->property("value").toInt(), 50);
    QCOMPARE(track->property("minimumValue").toInt(), 10);
    QCOMPARE(track->property("maximumValue").toInt(), 200);
    QCOMPARE(accessible(track, "description").toString(), QString("50 Mbps"));
}

void TestDialogKeyboard::switchesTellTheirState()
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

void TestDialogKeyboard::screenReadersCanWorkTheControls()
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
    act(option(pages, "fps", 0), "pressAction");
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

KOLM_GUI_TEST_MAIN(TestDialogKeyboard)
#include "tst_dialog_keyboard.moc"
