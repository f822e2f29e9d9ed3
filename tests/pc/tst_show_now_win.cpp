#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "ui/frameless_quick_window.h"

#include <atomic>
#include <memory>

#include <windows.h>

namespace {

// How many frames of a window have reached the screen, whichever thread draws.
class Frames
{
public:
    explicit Frames(QQuickWindow &window)
    {
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &window, [count = count_] { ++*count; },
            Qt::DirectConnection);
    }
    int count() const { return *count_; }

private:
    const std::shared_ptr<std::atomic<int>> count_ = std::make_shared<std::atomic<int>>(0);
};

} // namespace

// Windows that are to be seen before anything else happens.
class TestShowNowWin : public TestCase
{
    Q_OBJECT

private slots:
    void isSeenBeforeTheEventLoopRuns()
    {
        FramelessQuickWindow window;
        window.setGeometry(100, 120, 400, 300);
        const Frames frames(window);
        window.showNow();
        QVERIFY(window.isExposed());
        QVERIFY(frames.count() > 0);
        const int before = frames.count();
        window.setColor(Qt::red);
        window.showNow();
        QVERIFY(frames.count() > before);
    }

    // It shows what the program is waiting for.
    void windowBelowIsUpToDateAsWell()
    {
        FramelessQuickWindow below;
        show(below);
        FramelessQuickWindow toast;
        toast.setGeometry(150, 150, 200, 40);
        toast.setParentWin(&below);
        for (const QColor &colour : {QColor(Qt::red), QColor(Qt::blue)}) {
            below.setColor(colour);
            const Frames frames(below);
            toast.showNow();
            QVERIFY(frames.count() > 0);
            // Wine keeps what the processor has drawn until messages are looked for.
            if (QQuickWindow::sceneGraphBackend() == QLatin1String("software"))
                continue;
            // And that is what the screen shows, although nothing else has run.
            const QPoint spot = below.mapToGlobal(QPoint(300, 250));
            const HDC screen = ::GetDC(nullptr);
            const COLORREF seen = ::GetPixel(screen, spot.x(), spot.y());
            ::ReleaseDC(nullptr, screen);
            QCOMPARE(QColor(GetRValue(seen), GetGValue(seen), GetBValue(seen)).name(),
                     colour.name());
        }
    }

    // Nobody waits for a picture that cannot come.
    void minimisedWindowIsNotWaitedFor()
    {
        FramelessQuickWindow below;
        show(below);
        below.showMinimized();
        QTRY_VERIFY(!below.isExposed());
        const Frames frames(below);
        FramelessQuickWindow toast;
        toast.setGeometry(150, 150, 200, 40);
        toast.setParentWin(&below);
        toast.showNow();
        QCOMPARE(frames.count(), 0);
    }

    // As a toast does that was first seen before the dialog.
    void liesAboveNewerWindows()
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

KOLM_GUI_TEST_MAIN(TestShowNowWin)
#include "tst_show_now_win.moc"
