#include "controller/connection_stages.h"
#include "demonstration/simulated_surroundings.h"
#include "simpc/sim_pc.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QSignalSpy>

#include <csignal>

#include <unistd.h>

namespace {

const QByteArray page = R"(import QtQuick 2.15
import QtQuick.Window 2.15
Window {
    visible: true; width: 50; height: 50
    property int clicks: 0
    signal closeAll()
    MouseArea { objectName: "button"; anchors.fill: parent; onClicked: ++clicks }
})";

// Variables of the environment, while it lives.
class Environment
{
public:
    explicit Environment(std::initializer_list<QPair<QByteArray, QByteArray>> variables)
        : variables_(variables)
    {
        for (const auto &variable : variables_)
            qputenv(variable.first.constData(), variable.second);
    }
    ~Environment()
    {
        for (const auto &variable : variables_)
            qunsetenv(variable.first.constData());
    }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    const QList<QPair<QByteArray, QByteArray>> variables_;
};

} // namespace

// A process has one simulated PC, which is brought once: these functions go on
// where the one before ended.
class TestSimulatedSurroundings : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(pipe(script_), 0);
        QCOMPARE(dup2(script_[0], STDIN_FILENO), int(STDIN_FILENO));
        engine_ = std::make_unique<QQmlApplicationEngine>();
        orb_.setProperty("wired", false);
        engine_->rootContext()->setContextProperty("orb", &orb_);
        engine_->loadData(page);
        window_ = engine_->rootObjects().value(0);
        QVERIFY(window_);
    }

    void cleanupTestCase()
    {
        engine_.reset();
        surroundings_.reset();
        ::close(script_[1]);
    }

    void pcThatCannotBeBroughtEndsTheProgram_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("scenario") << QByteArray("SIMPC_SCENARIO") << QByteArray("no-such-scenario");
        QTest::newRow("speed") << QByteArray("SIMPC_SPEED") << QByteArray("fast");
    }

    void pcThatCannotBeBroughtEndsTheProgram()
    {
        QFETCH(QByteArray, variable);
        QFETCH(QByteArray, value);
        const Environment environment({{variable, value}});
        SimulatedSurroundings refused;
        QCOMPARE(refused.begin(), std::optional<int>(2));
        QVERIFY(!SimPc::exists());
    }

    void pcIsThereBeforeTheWindows()
    {
        const Environment environment({{"SIMPC_SCENARIO", "two-headsets"},
                                       {"SIMPC_SPEED", "100"},
                                       {"SIMPC_DIRECTED", "1"},
                                       {"SIMPC_LIMIT", "1"}});
        QCOMPARE(surroundings_->begin(), std::optional<int>());
        QVERIFY(SimPc::exists());
        surroundings_->attach(*engine_, &stages_);
        QCOMPARE(surroundings_->exitCode(0), 0);
    }

    void limitDecidesTheExitCode()
    {
        const QSignalSpy closed(window_, SIGNAL(closeAll()));
        QTRY_COMPARE(surroundings_->exitCode(0), 3);
        QCOMPARE(closed.count(), 1);
    }

    void withoutAScreenTheProcessorDraws()
    {
        QCOMPARE(qgetenv("QT_QUICK_BACKEND"), QByteArray("software"));
    }

    void signalClosesTheProgram()
    {
        const QSignalSpy closed(window_, SIGNAL(closeAll()));
        raise(SIGTERM);
        QTRY_COMPARE(closed.count(), 1);
    }

    void personOfTheScenarioChoosesTheLink()
    {
        SimPc::current().modeChoice.tell(true);
        QTRY_COMPARE(orb_.property("wired").toBool(), true);
        SimPc::current().modeChoice.tell(false);
        QTRY_COMPARE(orb_.property("wired").toBool(), false);
    }

    void scriptWorksTheWindow()
    {
        tell("click button\n");
        QTRY_COMPARE(window_->property("clicks").toInt(), 1);
        const QSignalSpy closed(window_, SIGNAL(closeAll()));
        tell("close\n");
        QTRY_COMPARE(closed.count(), 1);
    }

    void lineThatFailedCountsMoreThanTheLimit()
    {
        const QSignalSpy closed(window_, SIGNAL(closeAll()));
        tell("dance\n");
        QTRY_COMPARE(surroundings_->exitCode(0), 5);
        QCOMPARE(closed.count(), 1);
    }

    void eventLoopsOwnCodeCountsMost() { QCOMPARE(surroundings_->exitCode(-1), -1); }

    void nothingIsHeardOnceTheEventLoopHasEnded()
    {
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        QGuiApplication::exec();

        const QSignalSpy closed(window_, SIGNAL(closeAll()));
        raise(SIGTERM); // and nobody is ended by it
        SimPc::current().modeChoice.tell(true);
        tell("click button\n");
        QCoreApplication::processEvents();
        QCOMPARE(closed.count(), 0);
        QCOMPARE(orb_.property("wired").toBool(), false);
        QCOMPARE(window_->property("clicks").toInt(), 1);
    }

private:
    void tell(const QByteArray &line)
    {
        QCOMPARE(write(script_[1], line.constData(), size_t(line.size())), ssize_t(line.size()));
    }

    int script_[2] = {-1, -1};
    QObject orb_;
    ConnectionStages stages_;
    std::unique_ptr<SimulatedSurroundings> surroundings_ =
        std::make_unique<SimulatedSurroundings>();
    std::unique_ptr<QQmlApplicationEngine> engine_;
    QObject *window_ = nullptr;
};

KOLM_GUI_TEST_MAIN(TestSimulatedSurroundings)
#include "tst_simulated_surroundings.moc"
