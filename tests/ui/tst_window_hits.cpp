#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/ui/told_window.h"

#include <QCursor>
#include <QQuickItem>

// What lies where in the window, for the system and for the mouse.
class TestWindowHits : public TestCase
{
    Q_OBJECT

private slots:
    void titleBarDragsWhereNoControlIs_data()
    {
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<bool>("drags");

        QTest::newRow("bare bar") << QPoint(210, 80) << true;
        QTest::newRow("ignored label") << QPoint(65, 80) << true;
        QTest::newRow("button") << QPoint(115, 80) << false;
        QTest::newRow("first pixel of the bar") << QPoint(50, 60) << true;
        QTest::newRow("above the bar") << QPoint(210, 59) << false;
        QTest::newRow("below the bar") << QPoint(210, 101) << false;
        QTest::newRow("left of the bar") << QPoint(49, 80) << false;
    }

    void titleBarDragsWhereNoControlIs()
    {
        QFETCH(QPoint, point);
        QFETCH(bool, drags);

        // The bar lies at (50, 60) in the window; its children at 10 and 60 on it.
        Window window;
        window.setGeometry(100, 100, 400, 300);
        QQuickItem bar(window.contentItem());
        bar.setPosition(QPointF(50, 60));
        bar.setSize(QSizeF(200, 40));
        QQuickItem label(&bar);
        label.setPosition(QPointF(10, 0));
        label.setSize(QSizeF(30, 40));
        QQuickItem button(&bar);
        button.setPosition(QPointF(60, 0));
        button.setSize(QSizeF(30, 40));
        window.setTitleBar(&bar);
        window.addIgnore(&label);
        window.addIgnore(&label);

        const Window::Answer answer = window.ask(point);
        QCOMPARE(answer.handled, drags);
        QCOMPARE(answer.result, drags ? 2L : 0L);
    }

    void edgesComeBeforeTheTitleBar()
    {
        Window window;
        window.setGeometry(100, 100, 400, 300);
        QQuickItem bar(window.contentItem());
        bar.setSize(QSizeF(400, 40));
        window.setTitleBar(&bar);
        window.setBorderWidth(8);

        QCOMPARE(window.ask(QPoint(200, 3)).result, 2L);
        window.setResizeable(true);
        QCOMPARE(window.ask(QPoint(200, 3)).result, 12L);
        QCOMPARE(window.ask(QPoint(200, 8)).result, 2L);

        window.setMinimumWidth(400);
        window.setMaximumWidth(400);
        QCOMPARE(window.ask(QPoint(3, 20)).result, 2L);
        QCOMPARE(window.ask(QPoint(3, 3)).result, 12L);
    }

    void captionFollowsTheMouseAndNotTheMessage()
    {
        Window window;
        window.setGeometry(100, 100, 400, 300);
        QQuickItem bar(window.contentItem());
        bar.setSize(QSizeF(400, 40));
        window.setTitleBar(&bar);

        QCursor::setPos(window.mapToGlobal(QPoint(200, 20)));
        QVERIFY(window.askWithoutMouse(QPoint(200, 200)).handled);
        QCursor::setPos(window.mapToGlobal(QPoint(200, 200)));
        QVERIFY(!window.askWithoutMouse(QPoint(200, 20)).handled);
    }

    void withoutTitleBarEverythingIsContent()
    {
        Window window;
        window.setGeometry(100, 100, 400, 300);
        const Window::Answer answer = window.ask(QPoint(200, 20));
        QVERIFY(!answer.handled);
        QCOMPARE(answer.result, 0L);
    }

    void ignoredItemsMayBeDestroyed()
    {
        Window window;
        window.setGeometry(100, 100, 400, 300);
        QQuickItem bar(window.contentItem());
        bar.setSize(QSizeF(400, 40));
        window.setTitleBar(&bar);
        {
            QQuickItem label(&bar);
            label.setSize(QSizeF(400, 40));
            QVERIFY(!window.ask(QPoint(200, 20)).handled);
            window.addIgnore(&label);
            QCOMPARE(window.ask(QPoint(200, 20)).result, 2L);
        }
        QCOMPARE(window.ask(QPoint(200, 20)).result, 2L);
    }

    void hiddenControlsDoNotCount()
    {
        Window window;
        window.setGeometry(100, 100, 400, 300);
        QQuickItem bar(window.contentItem());
        bar.setSize(QSizeF(400, 40));
        window.setTitleBar(&bar);
        QQuickItem button(&bar);
        button.setSize(QSizeF(400, 40));

        QVERIFY(!window.ask(QPoint(200, 20)).handled);
        button.setVisible(false);
        QCOMPARE(window.ask(QPoint(200, 20)).result, 2L);
    }

    void mousePressOnTheCaptionDrags()
    {
        window_frame::sim::clearJournal();
        Window window;
        window.setGeometry(100, 100, 400, 300);
        QQuickItem bar(window.contentItem());
        bar.setSize(QSizeF(400, 40));
        window.setTitleBar(&bar);
        window.show();

        QTest::mousePress(&window, Qt::LeftButton, {}, QPoint(200, 20));
        QCOMPARE(window_frame::sim::journal(), QStringList("drag 2"));
    }

    void mousePressOnAnEdgeResizes()
    {
        window_frame::sim::clearJournal();
        Window window;
        window.setGeometry(100, 100, 400, 300);
        window.setResizeable(true);
        window.setBorderWidth(8);
        window.show();

        QTest::mousePress(&window, Qt::LeftButton, {}, QPoint(399, 299));
        QTest::mouseRelease(&window, Qt::LeftButton, {}, QPoint(399, 299));
        QTest::mousePress(&window, Qt::LeftButton, {}, QPoint(0, 150));
        QCOMPARE(window_frame::sim::journal(), (QStringList{"drag 17", "drag 10"}));
    }

    void otherMousePressesReachTheContent()
    {
        window_frame::sim::clearJournal();
        Window window;
        window.setGeometry(100, 100, 400, 300);
        QQuickItem bar(window.contentItem());
        bar.setSize(QSizeF(400, 40));
        QQuickItem button(&bar);
        button.setSize(QSizeF(40, 40));
        window.setTitleBar(&bar);
        window.show();

        QTest::mousePress(&window, Qt::LeftButton, {}, QPoint(20, 20));
        QTest::mouseRelease(&window, Qt::LeftButton, {}, QPoint(20, 20));
        QTest::mousePress(&window, Qt::LeftButton, {}, QPoint(200, 200));
        QTest::mouseRelease(&window, Qt::LeftButton, {}, QPoint(200, 200));
        QTest::mousePress(&window, Qt::RightButton, {}, QPoint(200, 20));
        QCOMPARE(window_frame::sim::journal(), QStringList());
    }
};

KOLM_GUI_TEST_MAIN(TestWindowHits)
#include "tst_window_hits.moc"
