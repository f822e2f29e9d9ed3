#include "simpc/window_frame_sim.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QCloseEvent>

// The main window as a window: its size, its title row and its end.
class TestMainWindow : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void opensWithItsFixedSize()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        QVERIFY(window);
        QCOMPARE(window->size(), QSize(1360, 875));
        QCOMPARE(pages.firstSize(), QSize(1360, 875));
        QCOMPARE(window->title(), zh("串流助手"));
        QCOMPARE(window->color(), QColor(Qt::transparent));
        QVERIFY(window->isVisible());
        QVERIFY(window->needShadow());
        QVERIFY(!window->resizeable());
        QVERIFY(window->titleBar());
        QCOMPARE(window->titleBar()->objectName(), QStringLiteral("titleRow"));
        QCOMPARE(window->titleBar()->height(), 90.0);
        QCOMPARE(window->property("ispullDown").toBool(), false);
    }

    void asksForTheModePageAndThenForThePorts()
    {
        Interface pages;
        pages.load();
        QCOMPARE(pages.orb.calls, (QStringList{"isHideSelectPage", "checkPortUsage"}));
    }

    void snapsBackToItsSize()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        window->resize(1920, 1080);
        QTRY_COMPARE(window->size(), QSize(1360, 875));
        window->resize(640, 480);
        QTRY_COMPARE(window->size(), QSize(1360, 875));
    }

    void worksWithoutUpdateChecker()
    {
        Interface pages;
        pages.hasUpdate = false;
        QVERIFY(pages.load());
        QCOMPARE(pages.text("version"), QString());
    }

    void minimiseMinimises()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.click("minimise");
        QCOMPARE(window->windowState(), Qt::WindowMinimized);
    }

    void closeButtonTellsTheControllerAndCloses()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.orb.calls.clear();
        bool openWhenTold = false;
        pages.orb.onCall = [&](const QString &) { openWhenTold = window->isVisible(); };

        pages.click("close");

        QCOMPARE(pages.orb.calls, QStringList("closeApp"));
        QVERIFY(openWhenTold);
        QVERIFY(!window->isVisible());
    }

    void closeRequestRunsTheSameShutdown()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.orb.calls.clear();

        QCloseEvent request;
        QCoreApplication::sendEvent(window, &request);

        QCOMPARE(pages.orb.calls, QStringList("closeApp"));
        QVERIFY(!window->isVisible());
    }

    void controllerMayCloseTheWindow()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        pages.orb.calls.clear();
        emit pages.orb.closeExe();
        QVERIFY(!window->isVisible());
        QCOMPARE(pages.orb.calls, QStringList());
    }
};

KOLM_GUI_TEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
