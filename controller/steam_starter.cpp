#include "controller/steam_starter.h"

#include "base/clock.h"
#include "checks/steam_watch.h"
#include "steamvr/steam_manager.h"

#include <QCoreApplication>
#include <QDebug>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto waitForSteamDelay = 2s;
constexpr auto firstSteamPause = 7s;
constexpr auto steamCheckInterval = 2s;
constexpr int steamCheckRounds = 10;
constexpr auto firstCheckDelay = 1s;
constexpr auto installFolderDelay = 4s;

// The controller's texts, whichever part speaks.
QString text(const char *source)
{
    return QCoreApplication::translate("ORBManager", source);
}

} // namespace

SteamStarter::SteamStarter(const Dependencies &dependencies, const QString &applicationDir,
                           QObject *parent)
    : QObject(parent), deps_(dependencies), applicationDir_(applicationDir)
{
}

void SteamStarter::startUp()
{
    if (!deps_.steam.hasLaunchSteam()) {
        deps_.steam.startSteam();
        deps_.clock.singleShot(waitForSteamDelay, this, [this] { waitForSteam(); });
    } else {
        deps_.steam.startSteamVR();
    }
    deps_.watch.checkInstalled();
    qInfo("checkSteam end");
}

void SteamStarter::scheduleFollowUps()
{
    deps_.clock.singleShot(firstCheckDelay, this, [this] { deps_.watch.checkSteam(); });
    // Steam started by us from there would lack the rights that it needs.
    if (applicationDir_.contains(QLatin1String("C:/Program Files")) ||
        applicationDir_.contains(QLatin1String("C:/Windows"))) {
        deps_.clock.singleShot(installFolderDelay, this, [this] {
            emit toast(text(QT_TRANSLATE_NOOP(
                           "ORBManager", "请使用管理员权限打开steam，或安装此程序到非系统目录")),
                       2000);
        });
    }
}

void SteamStarter::waitForSteam()
{
    emit toast(text(QT_TRANSLATE_NOOP("ORBManager", "steam启动中，请勿操作")), 5000);
    deps_.clock.sleep(firstSteamPause);
    for (int round = 0; !deps_.steam.hasLaunchSteam() && round < steamCheckRounds; ++round)
        deps_.clock.sleep(steamCheckInterval);
    deps_.steam.startSteamVR();
}

void SteamStarter::launch(bool steamVR)
{
    if (!steamVR) {
        emit toast(text(QT_TRANSLATE_NOOP("ORBManager", "正在登录steam，请稍等")), 15000);
        deps_.steam.startSteam();
        deps_.watch.steamLaunched();
        return;
    }
    deps_.steam.startSteamVR();
    deps_.watch.steamVRLaunched();
    emit toast(text(QT_TRANSLATE_NOOP("ORBManager", "正在准备打开或者安装SteamVR,确保已登录steam")),
               2000);
}
