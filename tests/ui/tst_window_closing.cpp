#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/ui/told_window.h"

#include <QSignalSpy>

using window_frame::Message;

// Who may close the window, and who only asks.
class TestWindowClosing : public TestCase
{
    Q_OBJECT

private slots:
    void closeRequestOfTheSystemMenuOnlyTells()
    {
        Window window;
        window.show();
        const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);

        const Window::Answer answer = window.tell(Message::Kind::CloseRequest);

        QVERIFY(answer.handled);
        QCOMPARE(asked.count(), 1);
        QVERIFY(window.isVisible());
    }

    void closeEventOfTheWindowManagerOnlyTells()
    {
        Window window;
        window.show();
        const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);

        QVERIFY(!requestClose(window));

        QCOMPARE(asked.count(), 1);
        QVERIFY(window.isVisible());
    }

    void ownCloseClosesWithoutAsking()
    {
        Window window;
        window.show();
        const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);

        QVERIFY(window.close());

        QVERIFY(!window.isVisible());
        QCOMPARE(asked.count(), 0);
    }

    void requestAfterAnOwnCloseIsARequestAgain()
    {
        Window window;
        window.close();
        window.show();
        const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);

        QVERIFY(!requestClose(window));
        QCOMPARE(asked.count(), 1);
        QVERIFY(window.isVisible());
    }

    void closingFromTheHandlerCloses()
    {
        Window window;
        window.show();
        int asked = 0;
        connect(&window, &FramelessQuickWindow::closeAll, this, [&] {
            ++asked;
            window.close();
        });

        requestClose(window);

        QCOMPARE(asked, 1);
        QVERIFY(!window.isVisible());
    }

    void windowPutAwayByItsHandlerDoesNotKeepTheApplicationFromQuitting()
    {
        Window window;
        window.show();
        connect(&window, &FramelessQuickWindow::closeAll, this, [&] { window.setVisible(false); });

        QVERIFY(requestClose(window));
    }

    void windowMayBeDestroyedByItsClosing()
    {
        auto *window = new Window;
        QPointer<Window> guard = window;
        window->show();
        connect(window, &QWindow::visibleChanged, window, [window](bool visible) {
            if (!visible)
                window->deleteLater();
        });
        window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!guard);
    }
};

KOLM_GUI_TEST_MAIN(TestWindowClosing)
#include "tst_window_closing.moc"
