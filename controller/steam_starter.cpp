#include "controller/readiness.h"

#include "base/clock.h"
#include "steamvr/steam_manager.h"

#include <QCoreApplication>
#include <QDebug>

namespace {

constexpr int waitForSteamDelay = 2000;  // ms
constexpr int firstSteamPause = 7000;    // ms
constexpr int steamCheckInterval = 2000; // ms
constexpr int steamCheckRounds = 10;
constexpr int firstLookDelay = 1000;     // ms
constexpr int installFolderDelay = 4000; // ms

// The controller's texts, whichever part speaks.
QString text(const char *source)
{
    return QCoreApplication::translate("ORBManager", source);
}

} // namespace

Readiness::Readiness(Clock &clock, SteamManager &steam, const QString &applicationDir,
                     QObject *parent)
    : QObject(parent), clock_(clock), steam_(steam), applicationDir_(applicationDir)
{
}

void Readiness::startUp()
{
    const State candidate = steam_.steamInstalled() ? Pass : NoneSteam;
    if (!steam_.hasLaunchSteam()) {
        steam_.startSteam();
        clock_.singleShot(waitForSteamDelay, this, [this] { waitForSteam(); });
    } else {
        steam_.startSteamVR();
    }
    if (candidate != state_)
        setState(candidate);
    qInfo("checkSteam end");
}

void Readiness::planLooks()
{
    clock_.singleShot(firstLookDelay, this, [this] { lookForSteam(); });
    // Steam started by us from there would lack the rights that it needs.
    if (applicationDir_.contains(QLatin1String("C:/Program Files")) ||
        applicationDir_.contains(QLatin1String("C:/Windows"))) {
        clock_.singleShot(installFolderDelay, this, [this] {
            emit toast(text(QT_TRANSLATE_NOOP(
                           "ORBManager", "请使用管理员权限打开steam，或安装此程序到非系统目录")),
                       2000);
        });
    }
}

void Readiness::waitForSteam()
{
    emit toast(text(QT_TRANSLATE_NOOP("ORBManager", "steam启动中，请勿操作")), 5000);
    clock_.sleep(firstSteamPause);
    for (int round = 0; !steam_.hasLaunchSteam() && round < steamCheckRounds; ++round)
        clock_.sleep(steamCheckInterval);
    steam_.startSteamVR();
}

void Readiness::lookForSteam()
{
    const bool running = steam_.hasLaunchSteam();
    if (running == steamRunning_)
        return;
    steamRunning_ = running;
    emit steamRunningChanged();
    if (!steam_.steamInstalled())
        setState(running ? Pass : NoneSteam);
}

void Readiness::lookForSteamVR()
{
    const bool running = steam_.hasLaunchSteamVR();
    if (running == steamVRRunning_)
        return;
    steamVRRunning_ = running;
    emit steamVRRunningChanged();
}

void Readiness::launch(bool steamVR)
{
    if (!steamVR) {
        emit toast(text(QT_TRANSLATE_NOOP("ORBManager", "正在登录steam，请稍等")), 15000);
        steam_.startSteam();
        emit steamRunningChanged();
        return;
    }
    steam_.startSteamVR();
    steamVRRunning_ = true;
    emit steamVRRunningChanged();
    emit toast(text(QT_TRANSLATE_NOOP("ORBManager", "正在准备打开或者安装SteamVR,确保已登录steam")),
               2000);
}

void Readiness::setState(State state)
{
    state_ = state;
    emit stateChanged();
}
