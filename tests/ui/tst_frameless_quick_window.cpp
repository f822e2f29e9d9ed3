#include "base/manual_clock.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/ui/told_window.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSignalSpy>

#include <memory>

using window_frame::Message;

// The type as pages use it: its properties, its shadow, its engine.
class TestFramelessQuickWindow : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qmlRegisterType<FramelessQuickWindow>("QtHeron.Window", 1, 0, "FramelessWindow");
        window_frame::sim::clearJournal();
        const Window first;
        asked_ = window_frame::sim::journal();
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

    // Once is enough.
    void systemPutsNoGhostsInTheirPlace()
    {
        QCOMPARE(asked_, QStringList("no ghosts"));
        window_frame::sim::clearJournal();
        const Window later;
        QCOMPARE(window_frame::sim::journal(), QStringList());
    }

    void showNowBringsTheWindowBelowUpToDate()
    {
        Window below;
        below.resize(100, 100);
        below.show();
        QTRY_VERIFY(below.isExposed());
        Window toast;
        toast.setParentWin(&below);
        const QSignalSpy frames(&below, &QQuickWindow::frameSwapped);
        toast.showNow();
        QCOMPARE(frames.count(), 1);

        // Nobody sees it.
        below.hide();
        toast.showNow();
        QCOMPARE(frames.count(), 1);
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

private:
    QStringList asked_; // by the first window, of the window manager
};

KOLM_GUI_TEST_MAIN(TestFramelessQuickWindow)
#include "tst_frameless_quick_window.moc"
