#include "base/manual_clock.h"
#include "simpc/window_frame_sim.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "ui/frameless_quick_window.h"

#include <QCloseEvent>
#include <QCursor>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>

#include <memory>

using window_frame::Message;

namespace {

// Lets a test hand native messages to the window.
class Window : public FramelessQuickWindow
{
public:
    explicit Window(QWindow *parent = nullptr) : FramelessQuickWindow(parent) {}
    explicit Window(Clock &clock) : FramelessQuickWindow(clock) {}

    struct Answer
    {
        bool handled;
        long result;
    };

    Answer tell(Message message)
    {
        long result = -1;
        const bool handled = nativeEvent(window_frame::sim::messageType, &message, &result);
        return {handled, result};
    }

    Answer tell(Message::Kind kind)
    {
        Message message;
        message.kind = kind;
        return tell(message);
    }

    // Asks what lies at a point of the window, in its own coordinates, with the
    // mouse there.
    Answer ask(const QPoint &point)
    {
        QCursor::setPos(mapToGlobal(point));
        return askWithoutMouse(point);
    }

    Answer askWithoutMouse(const QPoint &point)
    {
        Message message;
        message.kind = Message::Kind::HitTest;
        message.frame = {x(), y(), x() + width(), y() + height()};
        message.point = mapToGlobal(point);
        return tell(message);
    }
};

// Closes windows as the window manager does: by an event out of nowhere.
bool requestClose(QWindow &window)
{
    QCloseEvent event;
    QCoreApplication::sendEvent(&window, &event);
    return event.isAccepted();
}

} // namespace

class TestFramelessQuickWindow : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qmlRegisterType<FramelessQuickWindow>("QtHeron.Window", 1, 0, "FramelessWindow");
    }

    void interfaceIsInOrder()
    {
        const QMetaObject &meta = FramelessQuickWindow::staticMetaObject;
        QCOMPARE(meta.superClass()->className(), "QQuickView");

        QStringList properties;
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i)
            properties.append(QString::fromLatin1(meta.property(i).name()));
        QCOMPARE(properties, (QStringList{"activity", "needShadow", "titleBar", "resizeable",
                                          "borderWidth", "parentWin"}));

        QStringList signalNames;
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QString signature = QString::fromLatin1(meta.method(i).methodSignature());
            (meta.method(i).methodType() == QMetaMethod::Signal ? signalNames : methods)
                .append(signature);
        }
        QCOMPARE(signalNames,
                 (QStringList{"parentWinChanged()", "titleBarChanged()", "resizeableChanged()",
                              "needShadowChanged()", "borderWidthChanged()",
                              "transientParentChanged()", "closeAll()"}));
        QCOMPARE(methods,
                 (QStringList{"addIgnore(QQuickItem*)", "reqActive()", "close()", "showNow()"}));
    }

    void propertiesAreAsDeclared_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<bool>("writable");
        QTest::addColumn<QByteArray>("notify");

        QTest::newRow("activity") << QByteArray("bool") << false << QByteArray("activeChanged()");
        QTest::newRow("needShadow")
            << QByteArray("bool") << true << QByteArray("needShadowChanged()");
        QTest::newRow("titleBar") << QByteArray("QQuickItem*") << true
                                  << QByteArray("titleBarChanged()");
        QTest::newRow("resizeable")
            << QByteArray("bool") << true << QByteArray("resizeableChanged()");
        QTest::newRow("borderWidth")
            << QByteArray("int") << true << QByteArray("borderWidthChanged()");
        QTest::newRow("parentWin")
            << QByteArray("QWindow*") << true << QByteArray("transientParentChanged()");
    }

    void propertiesAreAsDeclared()
    {
        QFETCH(QByteArray, type);
        QFETCH(bool, writable);
        QFETCH(QByteArray, notify);

        const QMetaObject &meta = FramelessQuickWindow::staticMetaObject;
        const QMetaProperty property = meta.property(meta.indexOfProperty(QTest::currentDataTag()));
        QCOMPARE(QByteArray(property.typeName()), type);
        QVERIFY(property.isReadable());
        QCOMPARE(property.isWritable(), writable);
        QVERIFY(!property.isConstant());
        QCOMPARE(property.notifySignal().methodSignature(), notify);
        const bool own = notify != "activeChanged()";
        QCOMPARE(property.notifySignalIndex() >= meta.methodOffset(), own);
    }

    void startsWithTheseValues()
    {
        const Window window;
        QCOMPARE(window.borderWidth(), 0);
        QCOMPARE(window.needShadow(), true);
        QCOMPARE(window.resizeable(), false);
        QVERIFY(!window.titleBar());
        QVERIFY(!window.parentWin());
        QVERIFY(!window.activity());
    }

    void hasNoSystemFrame()
    {
        QVERIFY(Window().flags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(Window().flags().testFlag(Qt::Window));
    }

    void settersTellOnlyChanges()
    {
        Window window;
        QQuickItem bar;
        const QSignalSpy shadow(&window, &FramelessQuickWindow::needShadowChanged);
        const QSignalSpy resizeable(&window, &FramelessQuickWindow::resizeableChanged);
        const QSignalSpy border(&window, &FramelessQuickWindow::borderWidthChanged);
        const QSignalSpy titleBar(&window, &FramelessQuickWindow::titleBarChanged);

        for (int i = 0; i < 2; ++i) {
            window.setNeedShadow(false);
            window.setResizeable(true);
            window.setBorderWidth(6);
            window.setTitleBar(&bar);
        }

        QCOMPARE(shadow.count(), 1);
        QCOMPARE(resizeable.count(), 1);
        QCOMPARE(border.count(), 1);
        QCOMPARE(titleBar.count(), 1);
        QCOMPARE(window.needShadow(), false);
        QCOMPARE(window.resizeable(), true);
        QCOMPARE(window.borderWidth(), 6);
        QCOMPARE(window.titleBar(), &bar);
    }

    void titleBarForgetsAnItemThatIsDestroyed()
    {
        Window window;
        auto bar = std::make_unique<QQuickItem>();
        window.setTitleBar(bar.get());
        const QSignalSpy changed(&window, &FramelessQuickWindow::titleBarChanged);

        bar.reset();

        QVERIFY(!window.titleBar());
        QCOMPARE(changed.count(), 1);
        QVERIFY(!window.ask(QPoint(5, 5)).handled);
    }

    void titleBarKeepsTheNewItemWhenTheOldIsDestroyed()
    {
        Window window;
        QQuickItem bar;
        {
            QQuickItem old;
            window.setTitleBar(&old);
            window.setTitleBar(&bar);
        }
        QCOMPARE(window.titleBar(), &bar);
        window.setTitleBar(nullptr);
        QVERIFY(!window.titleBar());
    }

    void parentIsTheTransientParent()
    {
        QWindow main;
        Window window;
        window.setParentWin(&main);
        QCOMPARE(window.transientParent(), &main);
        window.setTransientParent(nullptr);
        QVERIFY(!window.parentWin());
    }

    void writingTheParentEmitsOnlyTheBaseSignal()
    {
        QWindow main;
        Window window;
        const QSignalSpy base(&window, &QWindow::transientParentChanged);
        const QSignalSpy own(&window, &FramelessQuickWindow::transientParentChanged);
        const QSignalSpy parentWin(&window, &FramelessQuickWindow::parentWinChanged);

        QVERIFY(window.setProperty("parentWin", QVariant::fromValue(&main)));

        QCOMPARE(window.transientParent(), &main);
        QCOMPARE(base.count(), 1);
        QCOMPARE(own.count(), 0);
        QCOMPARE(parentWin.count(), 0);
    }

    void transientParentChangedIsFollowedByParentWinChanged()
    {
        Window window;
        const QSignalSpy parentWin(&window, &FramelessQuickWindow::parentWinChanged);
        emit window.transientParentChanged();
        QCOMPARE(parentWin.count(), 1);
    }

    void activityFollowsTheWindow()
    {
        Window window;
        const QSignalSpy changed(&window, &QWindow::activeChanged);
        window.show();
        window.reqActive();
        QTRY_VERIFY(window.isActive());
        QVERIFY(window.activity());
        QVERIFY(changed.count() > 0);
    }

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

    void shadowFollowsNeedShadow()
    {
        window_frame::sim::clearJournal();
        Window window;
        window.create();
        window.setNeedShadow(false);
        window.setNeedShadow(true);
        QCOMPARE(window_frame::sim::journal(), (QStringList{"shadow off", "shadow on"}));
    }

    void shadowIsRenewedAfterTheFrameMayBeReset()
    {
        window_frame::sim::clearJournal();
        ManualClock clock;
        Window window(clock);
        window.create();

        QVERIFY(!window.tell(Message::Kind::FrameMayReset).handled);
        clock.advance(99);
        QCOMPARE(window_frame::sim::journal(), QStringList());
        clock.advance(1);
        QCOMPARE(window_frame::sim::journal(), QStringList("shadow on"));

        window.tell(Message::Kind::Other);
        window.tell(Message::Kind::CloseRequest);
        clock.advance(1000);
        QCOMPARE(window_frame::sim::journal(), QStringList("shadow on"));
    }

    void shadowNeedsANativeWindow()
    {
        window_frame::sim::clearJournal();
        Window window;
        window.setNeedShadow(false);
        QCOMPARE(window_frame::sim::journal(), QStringList());
    }

    void showNowIsSeenBeforeTheEventLoopRuns()
    {
        Window window;
        window.resize(100, 100);
        const QSignalSpy frames(&window, &QQuickWindow::afterRendering);
        window.showNow();
        QVERIFY(window.isVisible());
        QVERIFY(window.isExposed());
        QVERIFY(frames.count() > 0);

        // What changes while it is shown is seen as well.
        const int before = frames.count();
        window.setColor(Qt::red);
        window.showNow();
        QVERIFY(frames.count() > before);
    }

    void destroyedWindowRenewsNoShadow()
    {
        window_frame::sim::clearJournal();
        ManualClock clock;
        {
            Window window(clock);
            window.create();
            window.tell(Message::Kind::FrameMayReset);
        }
        clock.advance(100);
        QCOMPARE(window_frame::sim::journal(), QStringList());
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

    void windowsShareTheNamedEngine()
    {
        QQmlEngine engine;
        FramelessQuickWindow::setSharedEngine(&engine);
        {
            const Window first;
            const Window second;
            QCOMPARE(first.engine(), &engine);
            QCOMPARE(second.engine(), &engine);
        }
        FramelessQuickWindow::setSharedEngine(nullptr);
    }

    void windowBringsAnEngineWhenNoneIsNamed()
    {
        {
            QQmlEngine gone;
            FramelessQuickWindow::setSharedEngine(&gone);
        }
        QPointer<QQmlEngine> own;
        {
            const Window window;
            own = window.engine();
            QVERIFY(own);
        }
        QVERIFY(!own);
    }

    void qmlUsesItAsRootElement()
    {
        QQmlEngine engine;
        FramelessQuickWindow::setSharedEngine(&engine);
        QQmlComponent component(&engine);
        component.setData(R"(
        import QtQuick 2.15
        import QtHeron.Window 1.0
        FramelessWindow {
            id: root
            property int asked: 0
            property alias child: child
            width: 320; height: 240
            titleBar: bar
            onCloseAll: { ++asked; close() }
            Component.onCompleted: addIgnore(label)
            Item { id: bar; width: 320; height: 40
                Text { id: label; width: 100; height: 40 }
            }
            FramelessWindow { id: child; needShadow: false; parentWin: root }
        })",
                          QUrl());
        const std::unique_ptr<QObject> object(component.create());
        QVERIFY2(object, qPrintable(component.errorString()));
        auto *window = qobject_cast<FramelessQuickWindow *>(object.get());
        QVERIFY(window);
        QVERIFY(window->titleBar());
        QCOMPARE(window->titleBar()->width(), 320.0);
        auto *child = window->property("child").value<FramelessQuickWindow *>();
        QVERIFY(child);
        QCOMPARE(child->transientParent(), window);

        window->show();
        requestClose(*window);
        QCOMPARE(window->property("asked").toInt(), 1);
        QVERIFY(!window->isVisible());
        FramelessQuickWindow::setSharedEngine(nullptr);
    }
};

KOLM_GUI_TEST_MAIN(TestFramelessQuickWindow)
#include "tst_frameless_quick_window.moc"
