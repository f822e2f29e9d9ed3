#include "simpc/power_mode_sim.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "ui/rest.h"

using power_mode::sim::isEfficient;

// When the program rests. What that gives back is proved where there is a graphics
// driver.
class TestRest : public TestCase
{
    Q_OBJECT

    static bool keeps(const QQuickWindow &window)
    {
        return window.isPersistentOpenGLContext() && window.isPersistentSceneGraph();
    }

private slots:
    void restsWhileAllowedAndMinimised_data()
    {
        QTest::addColumn<bool>("allowed");
        QTest::addColumn<bool>("minimised");
        QTest::addColumn<bool>("rests");
        QTest::newRow("connected and minimised") << true << true << true;
        QTest::newRow("connected") << true << false << false;
        QTest::newRow("minimised while it searches") << false << true << false;
        QTest::newRow("neither") << false << false << false;
    }
    void restsWhileAllowedAndMinimised()
    {
        QFETCH(bool, allowed);
        QFETCH(bool, minimised);
        QFETCH(bool, rests);

        QQuickWindow window;
        QQuickWindow toast;
        Rest rest;
        rest.setWindow(&window);
        rest.setAllowed(allowed);
        window.show();
        toast.show();
        toast.hide();
        if (minimised)
            window.showMinimized();
        QCoreApplication::processEvents();
        QCOMPARE(isEfficient(), rests);
        QCOMPARE(keeps(window), !rests);
        QCOMPARE(keeps(toast), !rests);

        window.showNormal();
        QCoreApplication::processEvents();
        QVERIFY(!isEfficient());
        QVERIFY(keeps(window));
        QVERIFY(keeps(toast));
    }

    // The headset connects, and drops out, while nobody looks.
    void permissionComesAndGoes()
    {
        QQuickWindow window;
        Rest rest;
        rest.setWindow(&window);
        window.showMinimized();
        QCoreApplication::processEvents();
        QVERIFY(!isEfficient());
        rest.setAllowed(true);
        QVERIFY(isEfficient());
        QVERIFY(!keeps(window));
        rest.setAllowed(false);
        QVERIFY(!isEfficient());
        QVERIFY(keeps(window));
    }

    void endTakesTheWishBack()
    {
        QQuickWindow window;
        window.showMinimized();
        {
            Rest rest;
            rest.setWindow(&window);
            rest.setAllowed(true);
            QVERIFY(isEfficient());
        }
        QVERIFY(!isEfficient());
    }

    void windowThatIsGoneIsNotSpokenTo()
    {
        Rest rest;
        rest.setAllowed(true);
        {
            QQuickWindow window;
            rest.setWindow(&window);
            window.showMinimized();
            QCoreApplication::processEvents();
            QVERIFY(isEfficient());
        }
        rest.setAllowed(false);
        QVERIFY(!isEfficient());
    }
};

KOLM_GUI_TEST_MAIN(TestRest)
#include "tst_rest.moc"
