#include "demonstration/simulated_surroundings.h"

#include "base/clock.h"
#include "base/console.h"
#include "demonstration/close_signals.h"
#include "demonstration/demonstration.h"
#include "demonstration/exit_codes.h"
#include "demonstration/road_printer.h"
#include "demonstration/scripted_user.h"
#include "demonstration/wishes.h"
#include "simpc/scenario.h"
#include "simpc/sim_host.h"

#include <QCoreApplication>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>

#include <iostream>

namespace {

int refuse(const QString &reason)
{
    std::cerr << "The simulated PC cannot be set up: " << reason.toStdString() << std::endl;
    return exit_code::badScenario;
}

// Without a screen there is no OpenGL either.
void drawWithoutScreen()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (platform.startsWith("offscreen") && !qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
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

// The PC is still asked when the program's last objects end, after main(). This
// one ends after all that are made later.
std::unique_ptr<SimHost> &thePc()
{
    static std::unique_ptr<SimHost> pc;
    return pc;
}

// Prints what happens on the PC, and to it, as long as the PC is there.
std::shared_ptr<RoadPrinter> printerOf(SimPc &pc)
{
    auto printer = std::make_shared<RoadPrinter>(Clock::system(), console::echo);
    const auto say = [printer](const QString &line) { printer->say(line); };
    pc.events.onLine(say);
    pc.journal.onLine(say);
    return printer;
}

} // namespace

struct SimulatedSurroundings::Private
{
    Wishes wishes;
    std::shared_ptr<RoadPrinter> printer; // null when nobody asks for the road
    std::unique_ptr<Demonstration> demonstration;
    std::unique_ptr<ScriptedUser> scriptedUser;
    std::unique_ptr<CloseSignals> closeSignals;
};

SimulatedSurroundings::SimulatedSurroundings() : d(std::make_unique<Private>()) {}

std::optional<int> SimulatedSurroundings::begin()
{
    drawWithoutScreen();
    QString error;
    const SimSettings settings = SimSettings::fromEnvironment(&error);
    if (!error.isEmpty())
        return refuse(error);
    const Scenario chosen = scenario::load(settings.scenario, &error);
    if (!error.isEmpty())
        return refuse(error);
    Clock::setSystemSpeed(settings.speed);
    SimHost::Options options;
    options.settings = settings;
    thePc() = std::make_unique<SimHost>(chosen, options);
    d->wishes = Wishes::fromEnvironment();
    if (d->wishes.printRoad)
        d->printer = printerOf(thePc()->pc());
    return std::nullopt;
}

SimulatedSurroundings::~SimulatedSurroundings()
{
    d->closeSignals.reset();
    if (thePc())
        thePc()->stop();
}

void SimulatedSurroundings::attach(QQmlApplicationEngine &engine, const ConnectionRoad *road)
{
    thePc()->start();
    d->closeSignals = std::make_unique<CloseSignals>();
    QObject::connect(d->closeSignals.get(), &CloseSignals::closeRequested, &engine,
                     [&engine] { closeProgram(engine); });
    // The notifier belongs to the event loop and ends with it.
    QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit,
                     d->closeSignals.get(), [this] {
                         thePc()->pc().onPerson({});
                         d->closeSignals.reset();
                     });
    thePc()->pc().onPerson([&engine](bool wired) {
        QMetaObject::invokeMethod(
            &engine, [&engine, wired] { chooseMode(engine, wired); }, Qt::QueuedConnection);
    });
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().value(0));
    if (window && d->wishes.scripted) {
        d->scriptedUser = std::make_unique<ScriptedUser>(Clock::system(), *window, road);
        QObject::connect(d->scriptedUser.get(), &ScriptedUser::closeRequested, &engine,
                         [&engine] { closeProgram(engine); });
        // Its notifier belongs to the event loop, too.
        QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit,
                         d->scriptedUser.get(), &ScriptedUser::stop);
    }
    if (!road)
        return;

    Demonstration::Say say;
    if (d->printer)
        say = [printer = d->printer](const QString &line) { printer->say(line); };
    d->demonstration =
        std::make_unique<Demonstration>(d->wishes, Clock::system(), *road, window, say);
    QObject::connect(d->demonstration.get(), &Demonstration::closeRequested, &engine,
                     [&engine] { closeProgram(engine); });
    if (d->printer)
        d->printer->begin();
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
