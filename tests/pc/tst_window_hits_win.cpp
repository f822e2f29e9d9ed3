#include "tests/pc/framed_window_win.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QCursor>
#include <QQuickItem>

using namespace framed;

// What lies where in the window, when the system asks.
class TestWindowHitsWin : public TestCase
{
    Q_OBJECT

private slots:
    void edgesAnswerTheHitTest_data()
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

    void edgesAnswerTheHitTest()
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

    void fixedWidthLeavesTopAndBottom_data()
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

    void fixedWidthLeavesTopAndBottom()
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

    void withoutABandThereAreNoEdges()
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

    void edgesComeBeforeTheTitleBar()
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

    void negativeCoordinatesAreSigned()
    {
        FramelessQuickWindow window;
        window.setResizeable(true);
        window.setBorderWidth(8);
        create(window);
        ::SetWindowPos(handleOf(window), nullptr, -200, 50, 400, 300,
                       SWP_NOZORDER | SWP_NOACTIVATE);
        QCOMPARE(int(ask(window, -200, 200)), HTLEFT);
    }

    void titleBarAnswersTheHitTest_data()
    {
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("code");

        QTest::newRow("bare") << 300 << HTCAPTION;
        QTest::newRow("label") << 20 << HTCAPTION;
        QTest::newRow("button") << 60 << HTCLIENT;
    }

    void titleBarAnswersTheHitTest()
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

private:
    static LRESULT ask(QWindow &window, int x, int y)
    {
        return ::SendMessageW(handleOf(window), WM_NCHITTEST, 0, MAKELPARAM(x, y));
    }
};

KOLM_GUI_TEST_MAIN(TestWindowHitsWin)
#include "tst_window_hits_win.moc"
