#include "simpc/power_mode_sim.h"
#include "tests/qml/interface.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QElapsedTimer>
#include <QSignalSpy>

// A window that nobody looks at must not take anything from the game.
class TestQuiet : public TestCase
{
    Q_OBJECT

    // Whatever would draw or wake the program up again, in shown and hidden items.
    static QStringList moving(const Interface &pages)
    {
        QStringList found;
        QList<QQuickItem *> items{pages.window()->contentItem()};
        while (!items.isEmpty()) {
            QQuickItem *item = items.takeFirst();
            items += item->childItems();
            const QObjectList objects = item->children();
            for (const QObject *object : objects) {
                if ((object->inherits("QQuickAbstractAnimation") ||
                     object->inherits("ClockTimer")) &&
                    object->property("running").toBool())
                    found.append(QString::fromLatin1(object->metaObject()->className()));
            }
        }
        return found;
    }
    // How many frames the window draws while nothing happens but the event loop,
    // for far longer than a frame takes.
    static int framesDrawn(const Interface &pages)
    {
        const QSignalSpy frames(pages.window(), &QQuickWindow::beforeRendering);
        QElapsedTimer elapsed;
        for (elapsed.start(); elapsed.elapsed() < 100;)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return frames.count();
    }
    // Lets everything be drawn that was asked for before: the window system may
    // ask for one more frame at any time after the window has come up.
    static bool comesToRest(const Interface &pages)
    {
        for (int round = 0; round < 50; ++round) {
            if (framesDrawn(pages) == 0)
                return true;
        }
        return false;
    }
    static void connectAll(Interface &pages)
    {
        pages.orb.becomeSystemInfo("[]", "[[\"CPU\",\"fast\"]]");
        pages.orb.becomeHardware(FakeOrb::AdviceHardware);
        pages.stages.update({true, true, true, true, true}, QDateTime({2024, 1, 1}, {12, 0}));
        pages.orb.becomeSteamState(FakeOrb::Pass);
        pages.orb.becomeSteam(true);
        pages.orb.becomeSteamVR(true);
        pages.orb.headsets.fill({{"A", "10.0.0.1", true, true}});
        pages.orb.becomeConnected(true);
    }

private slots:
    void initTestCase() { registerInterface(); }

    void nothingMovesOnceEverythingIsDone()
    {
        Interface pages;
        pages.load();
        connectAll(pages);
        pages.activate();
        QCOMPARE(moving(pages), QStringList());
    }

    void somethingTurnsWhileItSearches()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeSteam(true);
        pages.activate();
        QVERIFY(moving(pages).contains("QQuickRotationAnimator"));
    }

    void nothingTurnsInAWindowThatIsNotInFront()
    {
        Interface pages;
        pages.load();
        pages.orb.becomeSteam(true);
        pages.activate();
        QVERIFY(!moving(pages).isEmpty());

        QWindow game;
        game.show();
        game.requestActivate();
        QTRY_VERIFY(!pages.window()->isActive());

        QCOMPARE(moving(pages), QStringList());
    }

    // It holds nothing of the graphics card then.
    void connectedProgramRestsWhileItIsMinimised()
    {
        Interface pages;
        pages.load();
        emit pages.orb.showToast("hello", 2000);
        pages.clock.advance(2000);
        pages.activate();
        pages.window()->showMinimized();
        QCoreApplication::processEvents();
        QVERIFY(!power_mode::sim::isEfficient());
        connectAll(pages);
        QVERIFY(power_mode::sim::isEfficient());
        QVERIFY(!pages.window()->isPersistentSceneGraph());
        QVERIFY(!qobject_cast<QQuickWindow *>(pages.find("toast"))->isPersistentSceneGraph());
        QVERIFY(comesToRest(pages));
        QCOMPARE(moving(pages), QStringList());

        pages.window()->showNormal();
        QTRY_VERIFY(!power_mode::sim::isEfficient());
        QVERIFY(pages.window()->isPersistentSceneGraph());
    }

    void nothingTurnsInAHiddenPart()
    {
        Interface pages;
        pages.orb.hideSelectPage = false;
        pages.load();
        pages.activate();
        QCOMPARE(moving(pages), QStringList());
    }

    void pollWithoutNewsDrawsNothing_data()
    {
        QTest::addColumn<bool>("details");
        QTest::newRow("cards") << false;
        QTest::newRow("details of the connection") << true;
    }
    void pollWithoutNewsDrawsNothing()
    {
        QFETCH(bool, details);

        Interface pages;
        pages.load();
        pages.orb.becomeWired(true);
        connectAll(pages);
        pages.activate();
        pages.window()->setProperty("ispullDown", details);
        pages.settle();
        QVERIFY(comesToRest(pages));

        // What the poll of the wired mode says every five seconds.
        for (int poll = 0; poll < 3; ++poll) {
            emit pages.orb.vrIsConnectChange();
            emit pages.orb.showVrList(true, false);
            pages.stages.update({true, true, true, true, true}, QDateTime({2024, 1, 1}, {12, 5}));
            QCOMPARE(framesDrawn(pages), 0);
        }
    }
};

KOLM_GUI_TEST_MAIN(TestQuiet)
#include "tst_quiet.moc"
