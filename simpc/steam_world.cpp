#include "simpc/steam_world.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <memory>

namespace {

const QString steamKey = QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Valve\\Steam");
const QString uninstallKey32 = QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Microsoft"
                                              "\\Windows\\CurrentVersion\\Uninstall");
const QString uninstallKey64 =
    QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall");
const QString steamVrUrl = QStringLiteral("steam://rungameid/250820");
const QString steamExe = QStringLiteral("steam.exe");
const QString vrServerExe = QStringLiteral("vrserver.exe");

// vrstartup.exe has passed the request on by then.
constexpr int shutdownToolEnds = 400;
constexpr int explorerEnds = 300;

// As they come up, and as they go.
const QStringList comingUp{QStringLiteral("vrmonitor.exe"), vrServerExe,
                           QStringLiteral("vrcompositor.exe"), QStringLiteral("vrwebhelper.exe"),
                           QStringLiteral("vrdashboard.exe")};
const QStringList goingDown{QStringLiteral("vrdashboard.exe"),
                            QStringLiteral("steamtours.exe"),
                            QStringLiteral("vrwebhelper.exe"),
                            QStringLiteral("vrcompositor.exe"),
                            vrServerExe,
                            QStringLiteral("vrmonitor.exe")};

QString slashed(QString path)
{
    path.replace('\\', '/');
    return QDir::cleanPath(path);
}

// Windows finds a file by its path in any letter case and with either slash.
bool samePath(const QString &a, const QString &b)
{
    return slashed(a).compare(slashed(b), Qt::CaseInsensitive) == 0;
}

// Lives in the launch handlers and changes that it gives to its PC. The PC
// calls them one at a time, so nothing here is locked.
class SteamWorld : public std::enable_shared_from_this<SteamWorld>
{
public:
    SteamWorld(SimPc &pc, const SteamOptions &options) : pc_(pc), options_(options) {}

    void install()
    {
        const auto self = shared_from_this();
        if (options_.steamInstalled) {
            pc_.registry.setText(steamKey, QStringLiteral("InstallPath"), options_.steamPath);
            if (options_.steamListed) {
                const QString entry = uninstallKey32 + QStringLiteral("\\Steam");
                pc_.registry.setText(entry, QStringLiteral("DisplayName"), QStringLiteral("Steam"));
                pc_.registry.setText(entry, QStringLiteral("InstallLocation"), options_.steamPath);
            }
            pc_.launches.on(
                steamExe, [self](const SimLaunch &request) { return self->launchSteam(request); });
            if (options_.steamRunning)
                pc_.processes.start(steamExe, steamProgram());
        }
        if (options_.steamVrInstalled) {
            const QString entry = uninstallKey64 + QStringLiteral("\\Steam App 250820");
            pc_.registry.setText(entry, QStringLiteral("DisplayName"), QStringLiteral("SteamVR"));
            pc_.registry.setText(entry, QStringLiteral("InstallLocation"), options_.steamVrPath);
            pc_.launches.on(QStringLiteral("vrstartup.exe"), [self](const SimLaunch &request) {
                return self->launchVrStartup(request);
            });
            if (options_.steamVrRunning) {
                for (const QString &name : comingUp)
                    pc_.processes.start(name, steamVrProgram(name));
            }
        }
        pc_.launches.on(QStringLiteral("explorer"),
                        [self](const SimLaunch &request) { return self->launchExplorer(request); });
        pc_.processes.onEnded(
            [self](const processes::Entry &process) { self->processEnded(process); });
    }

private:
    QString steamProgram() const { return options_.steamPath + '\\' + steamExe; }
    QString steamVrProgram(const QString &name) const
    {
        return options_.steamVrPath + QStringLiteral("\\bin\\win64\\") + name;
    }

    SimLaunchResult launchSteam(const SimLaunch &request)
    {
        if (!samePath(request.program, steamProgram()))
            return {false, 3, false, 0};
        if (!pc_.processes.isRunning(steamExe) && !steamComing_) {
            steamComing_ = true;
            pc_.timeline.after(options_.steamAppears,
                               [self = shared_from_this()] { self->steamAppears(); });
        }
        return {true, 0, true, options_.launcherEnds};
    }

    void steamAppears()
    {
        steamComing_ = false;
        pc_.processes.start(steamExe, steamProgram());
        pc_.events.add(QStringLiteral("Steam appears"));
    }

    SimLaunchResult launchExplorer(const SimLaunch &request)
    {
        if (request.parameters == steamVrUrl)
            openSteamVr();
        return {true, 0, true, explorerEnds};
    }

    void openSteamVr()
    {
        if (!options_.steamVrInstalled || !pc_.processes.isRunning(steamExe))
            return;
        if (coming_ || steamVrRuns())
            return;
        coming_ = true;
        pc_.events.add(QStringLiteral("SteamVR starts"));
        int delay = options_.steamVrAppears;
        for (const QString &name : comingUp) {
            later(delay, [this, name] { processAppears(name); });
            delay += options_.steamVrGap;
        }
    }

    bool steamVrRuns() const
    {
        return std::any_of(goingDown.begin(), goingDown.end(),
                           [this](const QString &name) { return pc_.processes.isRunning(name); });
    }

    void processAppears(const QString &name)
    {
        pc_.processes.start(name, steamVrProgram(name));
        if (name == vrServerExe) {
            // Only now SteamVR reads which drivers there are.
            if (driverRegistered())
                later(options_.driverLoads, [this] { driverLoaded(); });
            else
                pc_.events.add(QStringLiteral("SteamVR finds no streaming driver"));
        }
        if (name == comingUp.last()) {
            coming_ = false;
            pc_.events.add(QStringLiteral("SteamVR runs"));
        }
    }

    bool driverRegistered() const
    {
        const QString home = options_.homeDir.isEmpty() ? QDir::homePath() : options_.homeDir;
        QFile file(home + QStringLiteral("/AppData/Local/openvr/openvrpaths.vrpath"));
        if (!file.open(QIODevice::ReadOnly))
            return false;
        const QJsonObject paths = QJsonDocument::fromJson(file.readAll()).object();
        const QJsonArray drivers = paths[QStringLiteral("external_drivers")].toArray();
        return std::any_of(drivers.begin(), drivers.end(), [this](const QJsonValue &driver) {
            return options_.driverFolder.isEmpty() ||
                   slashed(driver.toString()) == slashed(options_.driverFolder);
        });
    }

    void driverLoaded()
    {
        if (!pc_.processes.isRunning(vrServerExe))
            return;
        driverRuns_ = true;
        if (options_.startServer) {
            pc_.events.add(QStringLiteral("streaming server starts"));
            options_.startServer();
        }
        if (options_.setsCell) {
            pc_.cell().write(1);
            pc_.events.add(QStringLiteral("the cell says 1"));
        }
    }

    SimLaunchResult launchVrStartup(const SimLaunch &request)
    {
        if (!samePath(request.program, steamVrProgram(QStringLiteral("vrstartup.exe"))))
            return {false, 3, false, 0};
        if (request.parameters == QStringLiteral("-shutdown"))
            shutDown();
        return {true, 0, true, shutdownToolEnds};
    }

    void shutDown()
    {
        if (closing_ || !steamVrRuns())
            return;
        ++run_; // what was still to come does not come any more
        coming_ = false;
        closing_ = true;
        pc_.events.add(QStringLiteral("SteamVR closes"));
        int delay = options_.steamVrCloses;
        for (const QString &name : goingDown) {
            if (!pc_.processes.isRunning(name))
                continue;
            later(delay, [this, name] { pc_.processes.endAll(name); });
            delay += options_.closingGap;
        }
    }

    void processEnded(const processes::Entry &process)
    {
        // The driver lives in SteamVR's server and goes however that goes.
        if (process.name == vrServerExe && driverRuns_) {
            driverRuns_ = false;
            if (options_.stopServer) {
                options_.stopServer();
                pc_.events.add(QStringLiteral("streaming server stops"));
            }
        }
        if (closing_ && !steamVrRuns()) {
            ++run_;
            closing_ = false;
            pc_.events.add(QStringLiteral("SteamVR is closed"));
        }
    }

    // Belongs to the present coming up or going down of SteamVR: does not happen
    // once that is over.
    void later(int delay, std::function<void()> step)
    {
        pc_.timeline.after(delay, [self = shared_from_this(), run = run_, step = std::move(step)] {
            if (self->run_ == run)
                step();
        });
    }

    SimPc &pc_;
    const SteamOptions options_;
    bool steamComing_ = false;
    bool coming_ = false;  // SteamVR's processes come up
    bool closing_ = false; // and go down
    bool driverRuns_ = false;
    int run_ = 0; // changes when a shutdown begins and when it is done
};

} // namespace

void installSteam(SimPc &pc, const SteamOptions &options)
{
    std::make_shared<SteamWorld>(pc, options)->install();
}
