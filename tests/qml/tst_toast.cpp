#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QCloseEvent>
#include <QSignalSpy>

// The short word above the window.
class TestToast : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { registerInterface(); }

    void toastShowsForItsDuration_data()
    {
        QTest::addColumn<QVariant>("duration");
        QTest::addColumn<int>("interval");

        QTest::newRow("given") << QVariant(13000) << 13000;
        QTest::newRow("another") << QVariant(5000) << 5000;
        QTest::newRow("not given") << QVariant() << 2000;
    }
    void toastShowsForItsDuration()
    {
        QFETCH(QVariant, duration);
        QFETCH(int, interval);

        Interface pages;
        pages.load();
        auto *toast = qobject_cast<QQuickWindow *>(pages.find("toast"));
        QVERIFY(!toast->isVisible());

        if (duration.isValid())
            emit pages.orb.showToast("hello", duration.toInt());
        else
            QMetaObject::invokeMethod(pages.window(), "showToast", Q_ARG(QVariant, "hello"),
                                      Q_ARG(QVariant, QVariant()));

        QVERIFY(toast->isVisible());
        QCOMPARE(pages.text("toastContent"), QStringLiteral("hello"));
        QCOMPARE(pages.find("toastTimer")->property("interval").toInt(), interval);
        QVERIFY(pages.find("toastTimer")->property("running").toBool());
    }

    void toastStandsInTheMiddleOfTheWindow()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        window->setPosition(100, 50);
        auto *toast = qobject_cast<FramelessQuickWindow *>(pages.find("toast"));

        for (const QString &text : {QStringLiteral("short"), QString(90, QChar(0x4e2d))}) {
            emit pages.orb.showToast(text, 2000);
            QVERIFY(qAbs(toast->x() + toast->width() / 2.0 - (100 + 680)) <= 1);
            QCOMPARE(toast->y(), 50 + 400);
        }
        QCOMPARE(toast->width(), 880);
        QCOMPARE(toast->parentWin(), window);
        QVERIFY(!toast->needShadow());
    }

    void toastHidesWhenItsTimeIsOver()
    {
        Interface pages;
        pages.load();
        emit pages.orb.showToast("hello", 3000);
        const auto *toast = qobject_cast<QQuickWindow *>(pages.find("toast"));
        pages.clock.advance(2999);
        QVERIFY(toast->isVisible());
        pages.clock.advance(1);
        QVERIFY(!toast->isVisible());
    }

    void laterToastReplacesTheEarlier()
    {
        Interface pages;
        pages.load();
        emit pages.orb.showToast("first", 15000);
        emit pages.orb.showToast("second", 2000);
        QCOMPARE(pages.text("toastContent"), QStringLiteral("second"));
        QCOMPARE(pages.find("toastTimer")->property("interval").toInt(), 2000);
        pages.clock.advance(2000);
        QVERIFY(!qobject_cast<QQuickWindow *>(pages.find("toast"))->isVisible());
    }

    // Whoever announces it may keep the event loop waiting for many seconds.
    void toastIsOnTheScreenBeforeAnythingElseHappens()
    {
        Interface pages;
        pages.load();
        pages.settle();
        auto *toast = qobject_cast<QQuickWindow *>(pages.find("toast"));
        const QSignalSpy frames(toast, &QQuickWindow::afterRendering);
        emit pages.orb.showToast("hello", 2000);
        QVERIFY(toast->isExposed());
        const int first = frames.count();
        QVERIFY(first > 0);
        emit pages.orb.showToast("something else", 2000);
        QVERIFY(frames.count() > first);
    }

    void toastLeavesTheWindowActive()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        auto *toast = qobject_cast<FramelessQuickWindow *>(pages.find("toast"));
        emit pages.orb.showToast("hello", 2000);
        QVERIFY(toast->flags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(toast->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        QVERIFY(toast->flags().testFlag(Qt::WindowTransparentForInput));
        QVERIFY(window->isVisible());
    }

    void closeRequestHidesTheToast()
    {
        Interface pages;
        FramelessQuickWindow *window = pages.load();
        auto *toast = qobject_cast<FramelessQuickWindow *>(pages.find("toast"));
        emit pages.orb.showToast("hello", 2000);
        pages.orb.calls.clear();

        QCloseEvent request;
        QCoreApplication::sendEvent(toast, &request);

        QVERIFY(!toast->isVisible());
        QVERIFY(window->isVisible());
        QCOMPARE(pages.orb.calls, QStringList());
    }
};

KOLM_GUI_TEST_MAIN(TestToast)
#include "tst_toast.moc"
