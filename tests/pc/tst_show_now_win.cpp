#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "ui/frameless_quick_window.h"

#include <QSignalSpy>

#include <windows.h>

// Windows that are to be seen before anything else happens.
class TestShowNowWin : public TestCase
{
    Q_OBJECT

private slots:
    void isSeenBeforeTheEventLoopRuns();
    void liesAboveNewerWindows();

private:
    static HWND handleOf(QWindow &window) { return reinterpret_cast<HWND>(window.winId()); }
    // Whether the system has one of them above the other.
    static bool liesAbove(QWindow &upper, QWindow &lower)
    {
        HWND below = handleOf(upper);
        while (below && below != handleOf(lower))
            below = ::GetWindow(below, GW_HWNDNEXT);
        return below != nullptr;
    }
    static void show(FramelessQuickWindow &window)
    {
        window.setGeometry(100, 120, 400, 300);
        window.show();
        QTRY_VERIFY(window.isExposed());
    }
};

void TestShowNowWin::isSeenBeforeTheEventLoopRuns()
{
    FramelessQuickWindow window;
    window.setGeometry(100, 120, 400, 300);
    const QSignalSpy frames(&window, &QQuickWindow::afterRendering);
    window.showNow();
    QVERIFY(window.isExposed());
    QVERIFY(frames.count() > 0);
    const int before = frames.count();
    window.setColor(Qt::red);
    window.showNow();
    QVERIFY(frames.count() > before);
}

// As a toast does that was first seen before the dialog.
void TestShowNowWin::liesAboveNewerWindows()
{
    FramelessQuickWindow owner;
    show(owner);
    FramelessQuickWindow toast;
    toast.setFlags(Qt::FramelessWindowHint | Qt::Tool | Qt::WindowDoesNotAcceptFocus);
    toast.setGeometry(150, 150, 200, 40);
    toast.setParentWin(&owner);
    toast.showNow();
    toast.setVisible(false);
    FramelessQuickWindow dialog;
    dialog.setParentWin(&owner);
    show(dialog);
    dialog.reqActive();
    QTRY_VERIFY(dialog.isActive());

    toast.showNow();
    QVERIFY(liesAbove(toast, dialog));
    QVERIFY(liesAbove(dialog, owner));
    QVERIFY(dialog.isActive());

    // What comes later lies above it, until it speaks again.
    dialog.raise();
    QVERIFY(liesAbove(dialog, toast));
    toast.showNow();
    QVERIFY(liesAbove(toast, dialog));
}

KOLM_GUI_TEST_MAIN(TestShowNowWin)
#include "tst_show_now_win.moc"
