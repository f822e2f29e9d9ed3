#include "pc/power_mode.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "ui/rest.h"

#include <atomic>
#include <memory>

namespace {

// How often something happened, whichever thread says so.
class Count
{
public:
    template <typename Signal>
    Count(QQuickWindow &window, Signal signal)
    {
        QObject::connect(
            &window, signal, &window, [count = count_] { ++*count; }, Qt::DirectConnection);
    }
    int get() const { return *count_; }

private:
    const std::shared_ptr<std::atomic<int>> count_ = std::make_shared<std::atomic<int>>(0);
};

} // namespace

// What a window that rests gives back, with OpenGL on a thread of its own.
class TestRestWin : public TestCase
{
    Q_OBJECT

private slots:
    void minimisedWindowHoldsNothingAndDrawsNothing()
    {
        QQuickWindow window;
        window.setGeometry(100, 100, 300, 200);
        Rest rest;
        rest.setWindow(&window);
        rest.setAllowed(true);
        const Count frames(window, &QQuickWindow::frameSwapped);
        const Count lost(window, &QQuickWindow::sceneGraphInvalidated);
        const Count made(window, &QQuickWindow::sceneGraphInitialized);
        window.show();
        QTRY_VERIFY(frames.get() > 0);
        QCOMPARE(made.get(), 1);
        QCOMPARE(lost.get(), 0);

        window.showMinimized();
        QTRY_COMPARE(lost.get(), 1);
        QVERIFY(!window.isExposed());
        QVERIFY(!window.openglContext());
        const int before = frames.get();
        for (int change = 0; change < 20; ++change) {
            window.setColor(change % 2 == 0 ? Qt::red : Qt::blue);
            window.update();
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        QCOMPARE(frames.get(), before);

        window.setColor(Qt::green);
        window.showNormal();
        QTRY_VERIFY(frames.get() > before);
        QCOMPARE(made.get(), 2);
        QTRY_COMPARE(window.grabWindow().pixelColor(150, 100), QColor(Qt::green));
        QCOMPARE(lost.get(), 1);
    }

    void windowThatMayNotRestKeepsEverything()
    {
        QQuickWindow window;
        window.setGeometry(100, 100, 300, 200);
        Rest rest;
        rest.setWindow(&window);
        const Count lost(window, &QQuickWindow::sceneGraphInvalidated);
        window.show();
        QTRY_VERIFY(window.openglContext());
        window.showMinimized();
        QTRY_VERIFY(!window.isExposed());
        for (int round = 0; round < 20; ++round)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QCOMPARE(lost.get(), 0);
        QVERIFY(window.openglContext());

        rest.setAllowed(true);
        QTRY_COMPARE(lost.get(), 1);
    }

    // Not every system takes it, but none complains.
    void powerModeMayBeAskedForAndGivenBack()
    {
        const bool taken = power_mode::setEfficient(true);
        QCOMPARE(power_mode::setEfficient(false), taken);
    }
};

KOLM_GUI_TEST_MAIN(TestRestWin)
#include "tst_rest_win.moc"
