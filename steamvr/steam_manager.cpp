#include "steamvr/steam_manager.h"

#include "base/threads.h"
#include "config/config_manager.h"
#include "pc/registry.h"
#include "pc/shell_launch.h"
#include "steamvr/launch_thread.h"
#include "steamvr/vr_server_watcher.h"
#include "sysinfo/system_info.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QThread>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr int seenToCountAsRunning = 4;
constexpr int missesToCountAsStopped = 2;
constexpr auto pauseBeforeLaunch = 2s; // lets a Steam that just ended go
constexpr auto steamLaunchLimit = 10s;
constexpr auto shutdownCommandLimit = 5s;
constexpr auto pauseInRestart = 1500ms;
constexpr auto startAfterRestart = 10s;
constexpr auto restartToastDelay = 4s;
constexpr auto lastTryInterval = 50ms;
constexpr int lastTries = 60; // 3 s after the last window has gone

const QString steamVRUninstallKey =
    QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
                   "Steam App 250820");

const char *flag(bool value)
{
    return value ? "true" : "false";
}

// What went wrong with a launch, if anything; it is logged, too.
std::optional<LaunchFailure> failureOf(const QString &program, const shell_launch::Outcome &outcome)
{
    if (outcome.started)
        return std::nullopt;
    // Some of the system's texts have a place for the name of the file.
    QString reason = outcome.startErrorText;
    reason.replace(QStringLiteral("%1"), program);
    qWarning().noquote().nospace() << "[steam] " << program << " could not be started: " << reason
                                   << " (error " << outcome.startError << ")";
    return LaunchFailure{program, outcome.startError, reason};
}

} // namespace

SteamManager::SteamManager(Dependencies dependencies)
    : dependencies_(std::move(dependencies)),
      registration_(dependencies_.config, dependencies_.applicationDir, dependencies_.homeDir)
{
    cell_.create();
    steamInstalled_ = isSteamInstalled();
    hasLaunchSteam();
}

SteamManager::~SteamManager()
{
    // The watchers read the cell: they end before it does.
    qDeleteAll(findChildren<QThread *>());
    finishTakingBack();
}

void SteamManager::finishTakingBack()
{
    for (int i = 0; i < lastTries && !registration_.takeBackAgain(); ++i)
        dependencies_.clock.sleep(lastTryInterval);
}

SteamManager &SteamManager::instance()
{
    static SteamManager manager([] {
        Dependencies dependencies{Clock::system(), ConfigManager::instance()};
        dependencies.applicationDir = QCoreApplication::applicationDirPath();
        dependencies.homeDir = QDir::homePath();
        dependencies.tell = long_wait::processTell();
        dependencies.pool = launch_thread::run;
        return dependencies;
    }());
    return manager;
}

bool SteamManager::hasLaunchSteam()
{
    return hasLaunchSteam(processes::list());
}

bool SteamManager::hasLaunchSteam(const std::vector<processes::Entry> &processes)
{
    const bool running = SystemInfo::isAmong(processes, QStringLiteral("steam.exe"));
    int seen = 0;
    {
        const MutexLock lock(countMutex_);
        steamRunning_ = running;
        steamSeenCount_ = running ? steamSeenCount_ + 1 : 0;
        seen = steamSeenCount_;
    }
    const bool result = seen >= seenToCountAsRunning;
    if (result)
        return true;
    qInfo().noquote().nospace() << "[steam] " << (running ? "lanunched steam" : "not launch steam")
                                << ",true num:" << seen << ",ret:" << flag(result)
                                << "; external_drivers: "
                                << flag(dependencies_.config.hasExternalDrivers(
                                       dependencies_.homeDir));
    return false;
}

bool SteamManager::hasLaunchSteamVR()
{
    return hasLaunchSteamVR(processes::list());
}

bool SteamManager::hasLaunchSteamVR(const std::vector<processes::Entry> &processes)
{
    if (SystemInfo::isAmong(processes, QStringLiteral("vrmonitor.exe"))) {
        const MutexLock lock(countMutex_);
        steamVRMissCount_ = 0;
        return true;
    }
    int misses = 0;
    {
        const MutexLock lock(countMutex_);
        misses = ++steamVRMissCount_;
    }
    qWarning().noquote().nospace()
        << "[steam] hasLaunchSteamVR:" << flag(false) << "; switch: " << misses;
    return misses < missesToCountAsStopped;
}

void SteamManager::startSteam()
{
    const MutexLock lock(startMutex_);
    qInfo("[steam] startSteam called");
    if (starting_) {
        qWarning("[steam] Steam is starting, return");
        emit showToast(QObject::tr("Steam正在启动中，请稍候"));
        return;
    }
    if (hasLaunchSteam()) {
        qInfo("[steam] steam is already running");
        return;
    }
    starting_ = dependencies_.pool([this] { launchWorker(); });
    if (!starting_)
        noteNoThread();
}

// To the user this is a launch that failed, and is told when any other would be: at the
// start of the program nobody listens yet.
void SteamManager::noteNoThread()
{
    const QString exe = steamInstallPath() + QStringLiteral("\\steam.exe");
    {
        const MutexLock lock(failureMutex_);
        steamFailure_ = LaunchFailure{exe, shell_launch::noThreadError, threads::lastReason()};
    }
    qWarning("[steam] startupSteam failed");
    dependencies_.clock.singleShot(pauseBeforeLaunch, this,
                                   [this] { emit showToast(QObject::tr("启动Steam失败")); });
}

void SteamManager::launchWorker()
{
    dependencies_.config.clearExternalDrivers(dependencies_.homeDir);
    dependencies_.clock.sleep(pauseBeforeLaunch);
    // Whoever has closed the program by now wants no Steam of it any more.
    const bool isDropped = launch_thread::isToEnd();
    const bool ok = !isDropped && launchSteamExe();
    {
        const MutexLock lock(startMutex_);
        starting_ = false;
    }
    if (isDropped)
        return;
    if (ok) {
        qInfo("[steam] startupSteam completed");
    } else {
        qWarning("[steam] startupSteam failed");
        emit showToast(QObject::tr("启动Steam失败"));
    }
}

bool SteamManager::launchSteamExe()
{
    const QString path = steamInstallPath();
    if (path.isEmpty()) {
        qWarning("[steam] Cannot find Steam installation path");
        emit showToast(QObject::tr("未找到Steam安装路径"));
        return false;
    }
    const QString exe = path + QStringLiteral("\\steam.exe");
    qInfo().noquote().nospace() << "[steam] steam path:" << exe;

    using shell_launch::Outcome;
    const Outcome outcome = shell_launch::openHiddenAndWait(
        exe, QStringLiteral("-silent"), steamLaunchLimit, [] { return !launch_thread::isToEnd(); });
    const std::optional<LaunchFailure> failure = failureOf(exe, outcome);
    {
        const MutexLock lock(failureMutex_);
        steamFailure_ = failure;
    }
    if (failure) {
        qWarning().noquote().nospace() << "[steam] executeExA failed, error:" << outcome.startError
                                       << ", elapsed:" << outcome.elapsed.count() << "ms";
        return false;
    }
    switch (outcome.wait) {
    case Outcome::Ended:
        qDebug().noquote().nospace()
            << "[steam] steam.exe success in " << outcome.elapsed.count() << "ms";
        break;
    case Outcome::TimedOut:
        qWarning().noquote().nospace()
            << "[steam] steam.exe wait timeout after 10s, " << outcome.elapsed.count() << "ms";
        break;
    case Outcome::GivenUp:
        qInfo("[steam] the end of the program does not wait for steam.exe");
        break;
    case Outcome::WaitFailed:
        qWarning().noquote().nospace() << "[steam] steam.exe failed, error:" << outcome.waitError
                                       << ", " << outcome.elapsed.count() << "ms";
        break;
    case Outcome::NoHandle:
        qWarning("[steam] Process handle is null");
        break;
    }
    qInfo("[steam] wait for steam.exe complete (max 10s)...");
    return true;
}

void SteamManager::startSteamVR()
{
    if (!hasLaunchSteam())
        return;
    if (QThread::currentThread() != thread()) {
        qWarning("[steam] startSteamVR thread");
        QMetaObject::invokeMethod(this, "startSteamVR", Qt::QueuedConnection);
        return;
    }
    if (left_)
        return;
    const openvr_paths::Problem problem = registration_.begin();
    qInfo("[steam] startSteamVR");
    emptyCell();
    shell_launch::startDetached(QStringLiteral("explorer"),
                                {QStringLiteral("steam://rungameid/250820")});
    if (problem != openvr_paths::Problem::None)
        emit driverNotRegistered(problem);
    emit steamVRStarted();
    // The registration is only for the moment of the start: left in place, it
    // would load our driver whenever SteamVR is used without us.
    VrServerWatcher::start(this, dependencies_.clock, cell_, [this, isFirst = true]() mutable {
        if (!std::exchange(isFirst, false))
            return registration_.takeBackAgain();
        qInfo("[steam] vrserver.exe detected, clearing VR config");
        return registration_.takeBack();
    });
}

void SteamManager::leaveToSystem()
{
    left_ = true;
    registration_.takeBack();
    finishTakingBack();
}

bool SteamManager::shutdownViaVrstartup()
{
    // The launch takes a narrow path, too.
    const auto location =
        registry::narrowText(steamVRUninstallKey, QStringLiteral("InstallLocation"));
    if (!location)
        return false;
    const QString program = *location + QStringLiteral("\\bin\\win64\\vrstartup.exe");
    const std::optional<LaunchFailure> failure =
        failureOf(program, shell_launch::openHiddenAndWait(program, QStringLiteral("-shutdown"),
                                                           shutdownCommandLimit));
    const MutexLock lock(failureMutex_);
    stopFailure_ = failure;
    return !failure;
}

std::optional<LaunchFailure> SteamManager::steamFailure() const
{
    const MutexLock lock(failureMutex_);
    return steamFailure_;
}

std::optional<LaunchFailure> SteamManager::stopFailure() const
{
    const MutexLock lock(failureMutex_);
    return stopFailure_;
}

void SteamManager::restartSteamVR()
{
    qInfo("[steam] restartSteamVR");
    stopSteamVR();
    QString serial;
    {
        const MutexLock lock(startMutex_);
        serial = restartSerial_;
    }
    // The settings store belongs to the object's thread. Posted after the stop,
    // it is carried out after the stop.
    const auto save = [this, serial] { dependencies_.config.saveDeviceSettings(serial); };
    if (QThread::currentThread() == thread())
        save();
    else
        QMetaObject::invokeMethod(this, save, Qt::QueuedConnection);
    dependencies_.clock.sleep(pauseInRestart);
    dependencies_.clock.singleShot(startAfterRestart, this, [this] { startSteamVR(); });
    dependencies_.clock.singleShot(restartToastDelay, this,
                                   [this] { emit showToast(QObject::tr("正在重启，请等待")); });
}

void SteamManager::setRestartSerial(const QString &serial)
{
    const MutexLock lock(startMutex_);
    restartSerial_ = serial;
}

void SteamManager::setVrstartupPath(const QString &steamVRPath)
{
    vrstartupPath_ = steamVRPath + QStringLiteral("\\bin\\win64\\vrstartup.exe");
}

bool SteamManager::hasFirewallRule(const QString &steamVRPath) const
{
    const QString rules = SystemInfo::runCommand(
        "netsh advfirewall firewall show rule name=\"SteamVR ORB vrserver\" verbose");
    return rules.contains(steamVRPath + QStringLiteral("\\bin\\win64\\vrserver.exe"));
}
