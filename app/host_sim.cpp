#include "app/host.h"

#include "app/close_signals_sim.h"
#include "app/demonstration_sim.h"
#include "app/director_sim.h"
#include "base/clock.h"
#include "simpc/scenario.h"
#include "simpc/sim_host.h"

#include <QCoreApplication>
#include <QMutex>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickWindow>

#include <cstdlib>
#include <iostream>

namespace {

constexpr int badScenario = 2;

[[noreturn]] void refuse(const QString &reason)
{
    std::cerr << "The simulated PC cannot be set up: " << reason.toStdString() << std::endl;
    std::exit(badScenario);
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

struct Host::Private
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
    std::unique_ptr<Director> director;
    std::unique_ptr<CloseSignals> closeSignals;
};

Host::Host() : d(std::make_shared<Private>())
{
    drawWithoutScreen();
    QString error;
    const SimSettings settings = SimSettings::fromEnvironment(&error);
    if (!error.isEmpty())
        refuse(error);
    const Scenario chosen = scenario::load(settings.scenario, &error);
    if (!error.isEmpty())
        refuse(error);
    Clock::setSystemSpeed(settings.speed);
    SimHost::Options options;
    options.settings = settings;
    thePc() = std::make_unique<SimHost>(chosen, options);
    if (Demonstration::Wishes::fromEnvironment().printRoad) {
        const auto tell = [d = d](const QString &line) { d->tell(line); };
        thePc()->pc().events.onLine(tell);
        thePc()->pc().journal.onLine(tell);
    }
}

Host::~Host()
{
    d->closeSignals.reset();
    thePc()->stop();
}

void Host::attach(QQmlApplicationEngine &engine, const ConnectionRoad *road)
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
    if (window && Director::isWanted()) {
        d->director = std::make_unique<Director>(Clock::system(), *window, road);
        QObject::connect(d->director.get(), &Director::closeRequested, &engine,
                         [&engine] { closeProgram(engine); });
        // Its notifier belongs to the event loop, too.
        QObject::connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit,
                         d->director.get(), &Director::stop);
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

std::optional<QString> Host::cloudHost() const
{
    if (!qEnvironmentVariableIsSet("SIMPC_CLOUD_HOST"))
        return std::nullopt;
    return qEnvironmentVariable("SIMPC_CLOUD_HOST");
}

int Host::exitCode(int loopResult) const
{
    if (loopResult != 0)
        return loopResult;
    if (d->director && d->director->result() != 0)
        return d->director->result();
    return d->demonstration ? d->demonstration->result() : 0;
}
