#include "demonstration/simulated_surroundings.h"

#include "base/clock.h"
#include "demonstration/close_signals.h"
#include "demonstration/demonstration.h"
#include "demonstration/scripted_user.h"
#include "simpc/scenario.h"
#include "simpc/sim_host.h"

#include <QCoreApplication>
#include <QMutex>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>

#include <iostream>

namespace {

constexpr int badScenario = 2;

int refuse(const QString &reason)
{
    std::cerr << "The simulated PC cannot be set up: " << reason.toStdString() << std::endl;
    return badScenario;
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

} // namespace

struct SimulatedSurroundings::Private
{
    // What happens on the PC, and to it. Until there is somebody to tell it is
    // kept: things begin before the window is there.
    void tell(const QString &line)
    {
        const QMutexLocker lock(&mutex);
        if (demonstration)
            demonstration->say(line);
        else
            untold.append(line);
    }

    QMutex mutex; // guards the two below
    QStringList untold;
    std::unique_ptr<Demonstration> demonstration;
    std::unique_ptr<ScriptedUser> scriptedUser;
    std::unique_ptr<CloseSignals> closeSignals;
};

SimulatedSurroundings::SimulatedSurroundings() : d(std::make_shared<Private>()) {}

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
    if (Demonstration::Wishes::fromEnvironment().printRoad) {
        const auto tell = [d = d](const QString &line) { d->tell(line); };
        thePc()->pc().events.onLine(tell);
        thePc()->pc().journal.onLine(tell);
    }
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
    if (window && ScriptedUser::isWanted()) {
        d->scriptedUser = std::make_unique<ScriptedUser>(Clock::system(), *window, road);
        QObject::connect(d->scriptedUser.get(), &ScriptedUser::closeRequested, &engine,
                         [&engine] { closeProgram(engine); });
        // Its notifier belongs to the event loop, too.
        QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit,
                         d->scriptedUser.get(), &ScriptedUser::stop);
    }
    if (!road)
        return;

    auto demonstration = std::make_unique<Demonstration>(Demonstration::Wishes::fromEnvironment(),
                                                         Clock::system(), *road, window);
    QObject::connect(demonstration.get(), &Demonstration::closeRequested, &engine,
                     [&engine] { closeProgram(engine); });
    const QMutexLocker lock(&d->mutex);
    d->demonstration = std::move(demonstration);
    for (const QString &line : qAsConst(d->untold))
        d->demonstration->say(line);
    d->untold.clear();
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
