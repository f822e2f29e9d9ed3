// Closing SteamVR, and what is waited for meanwhile.
#include "steamvr/steam_manager.h"
#include "steamvr/vr_server_watcher.h"
#include "sysinfo/system_info.h"

#include <QDebug>
#include <QStringList>
#include <QThread>

#include <chrono>

using namespace std::chrono_literals;
using long_wait::LongWait;

namespace {

constexpr auto processCheckInterval = 1s;
constexpr auto pauseAfterStop = 2500ms; // SteamVR writes its files

const QStringList steamVRProcesses = {
    QStringLiteral("vrserver.exe"),    QStringLiteral("vrmonitor.exe"),
    QStringLiteral("vrwebhelper.exe"), QStringLiteral("steamtours.exe"),
    QStringLiteral("vrdashboard.exe"), QStringLiteral("vrcompositor.exe"),
};

bool anySteamVRProcess()
{
    return SystemInfo::isAnyProcessRunning(steamVRProcesses);
}

} // namespace

void SteamManager::stopSteamVR()
{
    if (QThread::currentThread() != thread()) {
        qWarning("[steam] stopSteamVR thread");
        QMetaObject::invokeMethod(this, "stopSteamVR", Qt::QueuedConnection);
        return;
    }
    if (left_)
        return;
    {
        const MutexLock lock(failureMutex_);
        stopFailure_.reset();
    }
    registration_.takeBack();
    if (timerId_ != 0) {
        qInfo().noquote().nospace() << "[steam] Killing timer ID:" << timerId_;
        killTimer(timerId_);
        timerId_ = 0;
    }
    if (anySteamVRProcess())
        closeSteamVR();
    if (!registration_.takeBackAgain())
        VrServerWatcher::tryAgain(this, dependencies_.clock,
                                  [this] { return registration_.takeBackAgain(); });
    qInfo("[steam] stopSteamVR");
    emit steamVRStopped();
}

void SteamManager::closeSteamVR()
{
    LongWait wait(dependencies_.clock, {QStringLiteral("steamvr"), true}, dependencies_.tell);
    shutdownViaVrstartup();
    if (stopFailure())
        emit showToast(QObject::tr("SteamVR未能自动关闭，请手动关闭"));
    while (anySteamVRProcess() && waitsOn(wait)) {
        dependencies_.clock.sleep(processCheckInterval);
        registration_.takeBackAgain();
    }
    dependencies_.clock.sleep(pauseAfterStop);
}

// Does what the user wants done about SteamVR that does not close; false to go on
// although it runs.
bool SteamManager::waitsOn(LongWait &wait)
{
    switch (wait.turn()) {
    case long_wait::Choice::KeepWaiting:
        return true;
    case long_wait::Choice::EndPrograms:
        qWarning("[steam] the user ends SteamVR, which does not close");
        SystemInfo::killProcesses(steamVRProcesses);
        return true;
    case long_wait::Choice::GoOn:
        qWarning("[steam] the user goes on although SteamVR does not close");
        return false;
    }
    return true;
}

// Says that SteamVR's server is not up, before it starts.
void SteamManager::emptyCell()
{
    LongWait wait(dependencies_.clock, {QStringLiteral("cell"), false}, dependencies_.tell);
    bool gaveUp = false;
    cell_.write(0, [&] {
        gaveUp = wait.turn() == long_wait::Choice::GoOn;
        return !gaveUp;
    });
    if (gaveUp)
        qWarning("[steam] the user goes on although another program holds the shared memory");
}
