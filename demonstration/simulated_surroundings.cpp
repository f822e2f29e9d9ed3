#include "demonstration/simulated_surroundings.h"

#include "base/clock.h"
#include "base/console.h"
#include "base/threads.h"
#include "demonstration/close_signals.h"
#include "demonstration/demonstration.h"
#include "demonstration/exit_codes.h"
#include "demonstration/face_record.h"
#include "demonstration/progress_printer.h"
#include "demonstration/quick_screen.h"
#include "demonstration/script_input.h"
#include "demonstration/scripted_user.h"
#include "demonstration/wishes.h"
#include "simpc/scenario.h"
#include "simpc/sim_host.h"

#include <QCoreApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>

#include <csignal>
#include <iostream>
#include <optional>

#include <unistd.h>

namespace {

// Without a screen there is no OpenGL either.
void drawWithoutScreen()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.startsWith("offscreen") && !qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
}

// The PC is still asked when the program's last objects end, after main(). This
// one ends after all that are made later.
std::unique_ptr<SimHost> &thePc()
{
    static std::unique_ptr<SimHost> pc;
    return pc;
}

// The one that the environment asks for, and the speed at which everything
// goes. Says in a sentence what keeps it from being brought, or nothing.
QString bringPc()
{
    QString error;
    const SimSettings settings = SimSettings::fromEnvironment(&error);
    if (!error.isEmpty())
        return error;
    const Scenario chosen = scenario::load(settings.scenario, &error);
    if (!error.isEmpty())
        return error;
    Clock::setSystemSpeed(settings.speed);
    SimHost::Options options;
    options.settings = settings;
    thePc() = std::make_unique<SimHost>(chosen, options);
    return {};
}

// Prints what happens on the PC, and to it, as long as the PC is there.
std::shared_ptr<ProgressPrinter> printerOf(SimPc &pc)
{
    auto printer = std::make_shared<ProgressPrinter>(Clock::system(), console::echo);
    const auto say = [printer](const QString &line) { printer->say(line); };
    pc.events.onLine(say);
    pc.journal.onLine(say);
    return printer;
}

// As the mode page and its switch do.
void chooseMode(QQmlApplicationEngine &engine, bool wired)
{
    QObject *orb = engine.rootContext()->contextProperty(QStringLiteral("orb")).value<QObject *>();
    if (orb)
        orb->setProperty("wired", wired);
}

// The close button of the main window and the window manager both end in this
// signal.
void closeProgram(QQmlApplicationEngine &engine)
{
    const QList<QObject *> roots = engine.rootObjects();
    for (QObject *root : roots)
        QMetaObject::invokeMethod(root, "closeAll");
}

// Whoever asks for the end gets it.
template <typename Asking>
void closeOnRequest(const Asking &asking, QQmlApplicationEngine &engine)
{
    QObject::connect(&asking, &Asking::closeRequested, &engine,
                     [&engine] { closeProgram(engine); });
}

} // namespace

struct SimulatedSurroundings::Private
{
    void heedSignals(QQmlApplicationEngine &engine);
    void heedPerson(QQmlApplicationEngine &engine);
    void seatScriptedUser(QQmlApplicationEngine &engine, QQuickWindow &window,
                          const ConnectionStages *stages);
    void demonstrate(QQmlApplicationEngine &engine, QQuickWindow *window,
                     const ConnectionStages &stages);
    void endWithTheEventLoop();

    Wishes wishes;
    std::optional<threads::NoneToHave> noThreads; // for the assistant
    std::shared_ptr<ProgressPrinter> printer;     // null when nobody asks for the progress
    std::unique_ptr<CloseSignals> closeSignals;
    std::unique_ptr<QuickScreen> screen;
    std::unique_ptr<ScriptedUser> scriptedUser;
    std::unique_ptr<ScriptInput> input;
    std::unique_ptr<Demonstration> demonstration;
};

void SimulatedSurroundings::Private::heedSignals(QQmlApplicationEngine &engine)
{
    closeSignals = std::make_unique<CloseSignals>();
    closeOnRequest(*closeSignals, engine);
}

// The one of the scenario, in front of the PC.
void SimulatedSurroundings::Private::heedPerson(QQmlApplicationEngine &engine)
{
    thePc()->pc().modeChoice.set([&engine](bool wired) {
        QMetaObject::invokeMethod(
            &engine, [&engine, wired] { chooseMode(engine, wired); }, Qt::QueuedConnection);
    });
}

void SimulatedSurroundings::Private::seatScriptedUser(QQmlApplicationEngine &engine,
                                                      QQuickWindow &window,
                                                      const ConnectionStages *stages)
{
    screen = std::make_unique<QuickScreen>(window);
    scriptedUser = std::make_unique<ScriptedUser>(
        Clock::system(), script::Scene{*screen, stages},
        [](const QString &line) { console::echo(line.toStdString()); });
    closeOnRequest(*scriptedUser, engine);
    input = std::make_unique<ScriptInput>(STDIN_FILENO);
    QObject::connect(input.get(), &ScriptInput::arrived, scriptedUser.get(), &ScriptedUser::hear);
}

void SimulatedSurroundings::Private::demonstrate(QQmlApplicationEngine &engine,
                                                 QQuickWindow *window,
                                                 const ConnectionStages &stages)
{
    Demonstration::Say say;
    if (printer)
        say = [printer = printer](const QString &line) { printer->say(line); };
    demonstration = std::make_unique<Demonstration>(wishes, Clock::system(), stages, window, say);
    closeOnRequest(*demonstration, engine);
    if (printer)
        printer->begin();
}

// What belongs to the event loop, or speaks to objects that go with it.
void SimulatedSurroundings::Private::endWithTheEventLoop()
{
    thePc()->pc().modeChoice.set({});
    closeSignals.reset();
    input.reset();
    if (scriptedUser)
        scriptedUser->stop();
}

SimulatedSurroundings::SimulatedSurroundings() : d(std::make_unique<Private>()) {}

SimulatedSurroundings::~SimulatedSurroundings()
{
    d->closeSignals.reset();
    if (thePc())
        thePc()->stop();
}

std::optional<int> SimulatedSurroundings::begin()
{
    CloseSignals::heed();
    // Whoever reads what we print may go before us.
    std::signal(SIGPIPE, SIG_IGN);
    drawWithoutScreen();
    const QString problem = bringPc();
    if (!problem.isEmpty()) {
        std::cerr << "The simulated PC cannot be set up: " << problem.toStdString() << std::endl;
        return exit_code::badScenario;
    }
    d->wishes = Wishes::fromEnvironment();
    if (d->wishes.noThreads)
        d->noThreads.emplace();
    if (d->wishes.printProgress)
        d->printer = printerOf(thePc()->pc());
    return std::nullopt;
}

void SimulatedSurroundings::onApplication()
{
    face_record::begin();
}

void SimulatedSurroundings::onPublished(QQmlApplicationEngine &engine)
{
    face_record::follow(engine);
}

void SimulatedSurroundings::attach(QQmlApplicationEngine &engine, const ConnectionStages *stages)
{
    thePc()->start();
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit,
                     QCoreApplication::instance(), [this] { d->endWithTheEventLoop(); });
    d->heedSignals(engine);
    d->heedPerson(engine);
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (window && d->wishes.scripted)
        d->seatScriptedUser(engine, *window, stages);
    if (stages)
        d->demonstrate(engine, window, *stages);
}

std::optional<QString> SimulatedSurroundings::cloudHost() const
{
    if (!qEnvironmentVariableIsSet("SIMPC_CLOUD_HOST"))
        return std::nullopt;
    return qEnvironmentVariable("SIMPC_CLOUD_HOST");
}

int SimulatedSurroundings::exitCode(int loopResult) const
{
    if (loopResult != 0)
        return loopResult;
    if (d->scriptedUser && d->scriptedUser->result() != 0)
        return d->scriptedUser->result();
    return d->demonstration ? d->demonstration->result() : 0;
}
