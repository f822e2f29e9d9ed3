#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "ui/frameless_quick_window.h"

#include <QCursor>
#include <QQuickItem>
#include <QSignalSpy>

#include <windows.h>

// The window type on the system's own messages.
class TestWindowFrameWin : public TestCase
{
    Q_OBJECT

private slots:
    void edgesAnswerTheHitTest_data();
    void edgesAnswerTheHitTest();
    void fixedWidthLeavesTopAndBottom_data();
    void fixedWidthLeavesTopAndBottom();
    void withoutABandThereAreNoEdges();
    void edgesComeBeforeTheTitleBar();
    void negativeCoordinatesAreSigned();
    void titleBarAnswersTheHitTest_data();
    void titleBarAnswersTheHitTest();
    void closeCommandOnlyTells();
    void otherCommandsReachTheSystem();
    void ownCloseCloses();
    void styleFollowsTheShadow();
    void styleIsRenewedAfterShowing();
    void showNowIsSeenBeforeTheEventLoopRuns();

private:
    static HWND handleOf(QWindow &window) { return reinterpret_cast<HWND>(window.winId()); }
    static LRESULT ask(QWindow &window, int x, int y)
    {
        return ::SendMessageW(handleOf(window), WM_NCHITTEST, 0, MAKELPARAM(x, y));
    }
    static bool canMinimise(QWindow &window)
    {
        return ::GetWindowLongW(handleOf(window), GWL_STYLE) & WS_MINIMIZEBOX;
    }
    // Makes the window known to the system, which takes less than showing it.
    static void create(FramelessQuickWindow &window)
    {
        window.setGeometry(100, 120, 400, 300);
        window.create();
    }
    static void show(FramelessQuickWindow &window)
    {
        create(window);
        window.show();
        QTRY_VERIFY(window.isExposed());
    }
};

void TestWindowFrameWin::edgesAnswerTheHitTest_data()
{
    QTest::addColumn<int>("fromLeft");
    QTest::addColumn<int>("fromTop");
    QTest::addColumn<int>("code");

    QTest::newRow("left") << 0 << 150 << HTLEFT;
    QTest::newRow("right") << 399 << 150 << HTRIGHT;
    QTest::newRow("top") << 200 << 0 << HTTOP;
    QTest::newRow("bottom") << 200 << 299 << HTBOTTOM;
    QTest::newRow("top left") << 7 << 7 << HTTOPLEFT;
    QTest::newRow("top right") << 392 << 7 << HTTOPRIGHT;
    QTest::newRow("bottom left") << 7 << 292 << HTBOTTOMLEFT;
    QTest::newRow("bottom right") << 392 << 292 << HTBOTTOMRIGHT;
    QTest::newRow("middle") << 200 << 150 << HTCLIENT;
}

void TestWindowFrameWin::edgesAnswerTheHitTest()
{
    QFETCH(int, fromLeft);
    QFETCH(int, fromTop);
    QFETCH(int, code);

    FramelessQuickWindow window;
    window.setResizeable(true);
    window.setBorderWidth(8);
    create(window);
    RECT rect = {};
    ::GetWindowRect(handleOf(window), &rect);
    QCOMPARE(int(ask(window, rect.left + fromLeft, rect.top + fromTop)), code);
}

void TestWindowFrameWin::fixedWidthLeavesTopAndBottom_data()
{
    QTest::addColumn<int>("fromLeft");
    QTest::addColumn<int>("fromTop");
    QTest::addColumn<int>("code");

    QTest::newRow("left") << 0 << 150 << HTCLIENT;
    QTest::newRow("right") << 399 << 150 << HTCLIENT;
    QTest::newRow("top") << 200 << 0 << HTTOP;
    QTest::newRow("bottom") << 200 << 299 << HTBOTTOM;
    QTest::newRow("top left") << 0 << 0 << HTTOP;
    QTest::newRow("bottom right") << 399 << 299 << HTBOTTOM;
}

void TestWindowFrameWin::fixedWidthLeavesTopAndBottom()
{
    QFETCH(int, fromLeft);
    QFETCH(int, fromTop);
    QFETCH(int, code);

    FramelessQuickWindow window;
    window.setResizeable(true);
    window.setBorderWidth(8);
    window.setMinimumWidth(400);
    window.setMaximumWidth(400);
    create(window);
    RECT rect = {};
    ::GetWindowRect(handleOf(window), &rect);
    QCOMPARE(int(ask(window, rect.left + fromLeft, rect.top + fromTop)), code);
}

void TestWindowFrameWin::withoutABandThereAreNoEdges()
{
    FramelessQuickWindow window;
    window.setResizeable(true);
    create(window);
    RECT rect = {};
    ::GetWindowRect(handleOf(window), &rect);
    for (int x : {0, 200, 399}) {
        for (int y : {0, 150, 299})
            QCOMPARE(int(ask(window, rect.left + x, rect.top + y)), HTCLIENT);
    }
}

void TestWindowFrameWin::edgesComeBeforeTheTitleBar()
{
    FramelessQuickWindow window;
    window.setResizeable(true);
    window.setBorderWidth(8);
    QQuickItem bar(window.contentItem());
    bar.setSize(QSizeF(400, 40));
    window.setTitleBar(&bar);
    create(window);

    QPoint point = window.mapToGlobal(QPoint(200, 3));
    QCursor::setPos(point);
    QTRY_COMPARE(QCursor::pos(), point);
    QCOMPARE(int(ask(window, point.x(), point.y())), HTTOP);

    point = window.mapToGlobal(QPoint(200, 20));
    QCursor::setPos(point);
    QTRY_COMPARE(QCursor::pos(), point);
    QCOMPARE(int(ask(window, point.x(), point.y())), HTCAPTION);
}

void TestWindowFrameWin::negativeCoordinatesAreSigned()
{
    FramelessQuickWindow window;
    window.setResizeable(true);
    window.setBorderWidth(8);
    create(window);
    ::SetWindowPos(handleOf(window), nullptr, -200, 50, 400, 300, SWP_NOZORDER | SWP_NOACTIVATE);
    QCOMPARE(int(ask(window, -200, 200)), HTLEFT);
}

void TestWindowFrameWin::titleBarAnswersTheHitTest_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("code");

    QTest::newRow("bare") << 300 << HTCAPTION;
    QTest::newRow("label") << 20 << HTCAPTION;
    QTest::newRow("button") << 60 << HTCLIENT;
}

void TestWindowFrameWin::titleBarAnswersTheHitTest()
{
    QFETCH(int, x);
    QFETCH(int, code);

    FramelessQuickWindow window;
    QQuickItem bar(window.contentItem());
    bar.setSize(QSizeF(400, 40));
    QQuickItem label(&bar);
    label.setSize(QSizeF(40, 40));
    QQuickItem button(&bar);
    button.setPosition(QPointF(40, 0));
    button.setSize(QSizeF(40, 40));
    window.setTitleBar(&bar);
    window.addIgnore(&label);
    create(window);

    const QPoint point = window.mapToGlobal(QPoint(x, 20));
    QCursor::setPos(point);
    QTRY_COMPARE(QCursor::pos(), point);
    QCOMPARE(int(ask(window, point.x(), point.y())), code);
}

void TestWindowFrameWin::closeCommandOnlyTells()
{
    FramelessQuickWindow window;
    show(window);
    const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);
    ::SendMessageW(handleOf(window), WM_SYSCOMMAND, SC_CLOSE, 0);
    QCoreApplication::processEvents();
    QCOMPARE(asked.count(), 1);
    QVERIFY(window.isVisible());
    QVERIFY(::IsWindow(handleOf(window)));
}

void TestWindowFrameWin::otherCommandsReachTheSystem()
{
    FramelessQuickWindow window;
    show(window);
    const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);
    ::SendMessageW(handleOf(window), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    QVERIFY(::IsIconic(handleOf(window)));
    QCOMPARE(asked.count(), 0);
}

void TestWindowFrameWin::ownCloseCloses()
{
    FramelessQuickWindow window;
    show(window);
    const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);
    QVERIFY(window.close());
    QVERIFY(!window.isVisible());
    QCOMPARE(asked.count(), 0);
}

void TestWindowFrameWin::styleFollowsTheShadow()
{
    FramelessQuickWindow window;
    create(window);
    window.setNeedShadow(false);
    QVERIFY(!canMinimise(window));
    window.setNeedShadow(true);
    QVERIFY(canMinimise(window));
}

void TestWindowFrameWin::styleIsRenewedAfterShowing()
{
    FramelessQuickWindow window;
    window.setNeedShadow(false);
    window.create();
    const LONG style = ::GetWindowLongW(handleOf(window), GWL_STYLE);
    ::SetWindowLongW(handleOf(window), GWL_STYLE, style | WS_MINIMIZEBOX);
    show(window);
    QTRY_VERIFY(!canMinimise(window));
}

void TestWindowFrameWin::showNowIsSeenBeforeTheEventLoopRuns()
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

KOLM_GUI_TEST_MAIN(TestWindowFrameWin)
#include "tst_window_frame_win.moc"
