#include "simpc/sim_host.h"
#include "base/mutex.h"

#include "simpc/change_timer.h"
#include "simpc/host_connections.h"
#include "simpc/host_thread.h"
#include "simpc/server_process.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <iostream>
#include <optional>

namespace {

// Needs no application object.
QString programFolder()
{
    return QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath();
}

void complain(const QString &text)
{
    std::cerr << "simpc: " << text.toStdString() << std::endl;
}

} // namespace

SimSettings SimSettings::fromEnvironment(QString *error)
{
    error->clear();
    SimSettings settings;
    settings.scenario = qEnvironmentVariable("SIMPC_SCENARIO", settings.scenario);
    settings.serverProgram = qEnvironmentVariable("SIMPC_SERVER_PROGRAM");
    settings.serverLog = qEnvironmentVariable("SIMPC_SERVER_LOG");
    settings.adbFolder = qEnvironmentVariable("SIMPC_ADB");
    settings.adbState = qEnvironmentVariable("ADB_SIM_FOLDER");
    settings.adbPort =
        static_cast<quint16>(qEnvironmentVariableIntValue("ANDROID_ADB_SERVER_PORT"));
    settings.journal = qEnvironmentVariable("SIMPC_JOURNAL");
    const QString speed = qEnvironmentVariable("SIMPC_SPEED");
    if (!speed.isEmpty()) {
        bool ok = false;
        settings.speed = speed.toDouble(&ok);
        if (!ok || !(settings.speed >= 0.01 && settings.speed <= 1000)) {
            *error = QStringLiteral("SIMPC_SPEED must be a number from 0.01 to 1000, not \"%1\"")
                         .arg(speed);
            settings.speed = 1;
        }
    }
    return settings;
}

struct SimHost::Private
{
    Private(const Scenario &from, const Options &with)
        : scenario(from), options(with), pc(*options.clock, makeCell()), began(pc.timeline.now()),
          timer(std::make_shared<ChangeTimer>(pc.timeline, thread))
    {
    }

    // The streaming server's process and this one share a file.
    bool sharesCell() const { return scenario.server.kind == ServerPlan::Program; }
    QString cellFile() const { return folder.filePath(QStringLiteral("cell")); }
    std::unique_ptr<SimCell> makeCell() const
    {
        return sharesCell() ? std::make_unique<SimCell>(cellFile()) : std::make_unique<SimCell>();
    }

    void fillIn();
    void bringAdb();
    std::vector<tcp_table::Row> serverConnections();
    void openJournal();
    void writeJournal(const QString &who, qint64 when, const QString &line);
    void beginServer();
    void endServer();

    Scenario scenario;
    const Options options;
    QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/simpc-XXXXXX")}; // holds the cell
    Mutex journalMutex;
    QFile journal GUARDED_BY(journalMutex);
    SimPc pc;
    const qint64 began;
    ServerProcess server; // the thread's
    HostThread thread;
    const std::shared_ptr<ChangeTimer> timer;
    std::optional<qint64> firstStart;
    bool started = false;
};

void SimHost::Private::fillIn()
{
    SteamOptions &steam = scenario.steam;
    steam.homeDir = options.homeDir;
    steam.driverFolder = options.driverFolder.isEmpty() ? programFolder() : options.driverFolder;
    if (sharesCell()) {
        steam.startServer = [this] { beginServer(); };
        steam.stopServer = [this] { endServer(); };
    }
}

void SimHost::Private::bringAdb()
{
    const SimSettings &settings = options.settings;
    AdbPlace place;
    place.programFolder = settings.adbFolder.isEmpty()
                              ? programFolder() + QStringLiteral("/adb_sim")
                              : settings.adbFolder;
    place.stateFolder =
        settings.adbState.isEmpty() ? folder.filePath(QStringLiteral("adb")) : settings.adbState;
    place.endsWithUs = settings.adbState.isEmpty();
    place.port = settings.adbPort;
    const QString problem = installAdb(scenario.adb, place, pc);
    if (!problem.isEmpty())
        complain(problem);
}

// A change of the PC: these two run one at a time. The process itself belongs
// to the thread.
void SimHost::Private::beginServer()
{
    if (!firstStart)
        firstStart = pc.timeline.now();
    const SimSettings &settings = options.settings;
    QStringList arguments = scenario.server.arguments(pc.timeline.now() - *firstStart);
    arguments << QStringLiteral("--cell") << cellFile() << QStringLiteral("--speed")
              << QString::number(settings.speed);
    if (!settings.serverLog.isEmpty())
        arguments << QStringLiteral("--log") << settings.serverLog;
    arguments += options.serverArguments;
    const QString program = settings.serverProgram.isEmpty()
                                ? programFolder() + QStringLiteral("/streaming-server-sim")
                                : settings.serverProgram;
    thread.post([this, program, arguments] {
        if (!server.begin(program, arguments)) {
            pc.events.add(QStringLiteral("the streaming server could not be started"));
            complain(QStringLiteral("cannot start ") + program);
        }
    });
}

void SimHost::Private::endServer()
{
    thread.post([this] { server.end(); });
}

// Those of the streaming server's process, which SteamVR's server has loaded: on a real
// PC they are its own.
std::vector<tcp_table::Row> SimHost::Private::serverConnections()
{
    const qint64 serverPid = server.runningPid();
    if (serverPid == 0)
        return {};
    for (const processes::Entry &process : pc.processes.list()) {
        if (process.name == QLatin1String("vrserver.exe"))
            return host_connections::of(serverPid, process.pid);
    }
    return {};
}

void SimHost::Private::openJournal()
{
    if (options.settings.journal.isEmpty())
        return;
    {
        const MutexLock lock(journalMutex);
        journal.setFileName(options.settings.journal);
        if (!journal.open(QIODevice::WriteOnly | QIODevice::Append)) {
            complain(QStringLiteral("cannot write ") + options.settings.journal);
            return;
        }
    }
    pc.journal.onLine([this](const QString &line) {
        writeJournal(QStringLiteral("program"), pc.timeline.clock().elapsed(), line);
    });
    pc.events.onLine([this](const QString &line) {
        writeJournal(QStringLiteral("pc"), pc.timeline.now(), line);
    });
}

void SimHost::Private::writeJournal(const QString &who, qint64 when, const QString &line)
{
    const QString text = QStringLiteral("%1 %2: %3\n")
                             .arg(static_cast<double>(when - began) / 1000.0, 9, 'f', 3)
                             .arg(who, -7)
                             .arg(line);
    const MutexLock lock(journalMutex);
    journal.write(text.toUtf8());
    journal.flush();
}

SimHost::SimHost(const Scenario &scenario, const Options &options)
    : d(std::make_unique<Private>(scenario, options))
{
    d->openJournal();
    d->fillIn();
    scenario::build(d->scenario, d->pc);
    d->bringAdb();
    d->pc.ports.setHostConnections([this] { return d->serverConnections(); });
}

SimHost::~SimHost()
{
    stop();
}

SimPc &SimHost::pc()
{
    return d->pc;
}

void SimHost::start()
{
    if (d->started)
        return;
    d->started = true;
    // The process may be touched on its thread only, so it ends there.
    d->thread.start([this] { d->server.end(); });
    d->timer->begin();
}

void SimHost::stop()
{
    d->started = true;
    d->timer->end();
    d->thread.stop();
}

qint64 SimHost::serverPid() const
{
    return d->server.runningPid();
}
