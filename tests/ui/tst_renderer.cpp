#include "base/manual_clock.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "ui/renderer.h"

#include <QFile>
#include <QQuickWindow>

using renderer::Trial;

namespace {

const char *const variables[] = {"QT_QUICK_BACKEND", "QMLSCENE_DEVICE", "QT_OPENGL", "QSG_RHI",
                                 "QSG_RHI_BACKEND"};

bool isDrawnByTheProcessor()
{
    return QQuickWindow::sceneGraphBackend() == QLatin1String("software");
}

} // namespace

// Which of the two draws.
class TestRenderer : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        for (const char *name : variables)
            qunsetenv(name);
        QQuickWindow::setSceneGraphBackend(QString());
    }

    void openGlNeedsAVersionAndParts_data()
    {
        QTest::addColumn<bool>("usable");
        QTest::addColumn<int>("major");
        QTest::addColumn<bool>("complete");
        QTest::addColumn<QString>("shortcoming");

        QTest::newRow("no context") << false << 0 << false << "there is no OpenGL";
        QTest::newRow("the system's own") << true << 1 << false << "OpenGL 1 is too old";
        QTest::newRow("too old, with extensions") << true << 1 << true << "OpenGL 1 is too old";
        QTest::newRow("parts missing") << true << 2 << false << "OpenGL lacks shaders or buffers";
        QTest::newRow("just enough") << true << 2 << true << "";
        QTest::newRow("usual") << true << 4 << true << "";
    }
    void openGlNeedsAVersionAndParts()
    {
        QFETCH(bool, usable);
        QFETCH(int, major);
        QFETCH(bool, complete);
        QTEST(renderer::shortcoming({usable, major, complete}), "shortcoming");
    }

    void whoSetsTheEnvironmentIsRight_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const char *name : variables)
            QTest::newRow(name) << QByteArray(name);
    }
    void whoSetsTheEnvironmentIsRight()
    {
        QFETCH(QByteArray, name);
        QVERIFY(!renderer::isChosenByEnvironment());
        qputenv(name, "something");
        QVERIFY(renderer::isChosenByEnvironment());
        {
            const ManualClock clock;
            const Trial trial(path("mark"), clock);
            QVERIFY(!QFile::exists(path("mark")));
        }
        QCOMPARE(QQuickWindow::sceneGraphBackend(), QString());
        QCOMPARE(logged(), QStringList());
    }

    void crashKeepsOpenGlAwayForADay_data()
    {
        QTest::addColumn<int>("hours");
        QTest::addColumn<bool>("away");
        QTest::newRow("a moment ago") << 0 << true;
        QTest::newRow("most of a day") << 23 << true;
        QTest::newRow("a day") << 25 << false;
    }
    void crashKeepsOpenGlAwayForADay()
    {
        QFETCH(int, hours);
        QFETCH(bool, away);
        writeFile("mark", "");
        const ManualClock clock(QDateTime::currentDateTime().addSecs(hours * 3600));
        const QString reason = QStringLiteral(
            "windows are drawn without OpenGL: an earlier start ended when it was tried");
        if (away)
            announce(reason);
        else if (!renderer::shortcoming(renderer::probe()).isEmpty())
            announce(QStringLiteral("windows are drawn without OpenGL: there is no OpenGL"));
        {
            const Trial trial(path("mark"), clock);
            QCOMPARE(loggedCount(reason), away ? 1 : 0);
        }
        // What was seen to go wrong is remembered; what went well is not.
        QCOMPARE(QFile::exists(path("mark")), away);
        if (away)
            QVERIFY(isDrawnByTheProcessor());
    }

    void withoutACrashThereIsNothingToWaitFor() { QVERIFY(!renderer::isTooSoon(std::nullopt)); }

    // Where this runs there may be OpenGL or not: the decision is the probe's.
    void trialDoesWhatTheProbeFinds()
    {
        const QString problem = renderer::shortcoming(renderer::probe());
        if (!problem.isEmpty())
            announce("windows are drawn without OpenGL: " + problem);
        const ManualClock clock;
        {
            const Trial trial(path("mark"), clock);
            QVERIFY(QFile::exists(path("mark")));
        }
        QCOMPARE(isDrawnByTheProcessor(), !problem.isEmpty());
        QVERIFY(!QFile::exists(path("mark")));
    }
};

KOLM_GUI_TEST_MAIN(TestRenderer)
#include "tst_renderer.moc"
