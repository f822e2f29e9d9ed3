#include "app/product.h"

#include "base/clock.h"
#include "cloud/cloud_host.h"
#include "cloud/http_manager.h"
#include "cloud/orb_update.h"
#include "config/config_manager.h"
#include "controller/orb_manager.h"
#include "controller/road_model.h"
#include "link/sys_manager.h"
#include "pc/shell_launch.h"
#include "qml/resources.h"
#include "res/resources.h"
#include "steamvr/steam_manager.h"
#include "sysinfo/system_info.h"
#include "usb/adb_manger.h"

#include <QDebug>
#include <QDesktopServices>
#include <QGuiApplication>
#include <QLocale>
#include <QMetaEnum>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QStandardPaths>

Product::Product(const QLocale &locale, QGuiApplication *app)
{
    qmlRegisterUncreatableType<ORBManager>("ORBManager", 1, 0, "ORBManagerCLS",
                                           QStringLiteral("there is one, called orb"));
    qInfo().noquote().nospace() << "json language: "
                                << QMetaEnum::fromType<QLocale::Language>().valueToKey(
                                       locale.language());
    SysManager::setRestartHandler([] { SteamManager::instance().restartSteamVR(); });
    ConfigManager::instance().setCableProbe(&SystemInfo::hasVirtualCable);
    const QString dataDir = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    const ORBManager::Services services = {
        Clock::system(),
        ConfigManager::instance(),
        SteamManager::instance(),
        SystemInfo::instance(),
        []() -> HeadsetLink & { return SysManager::instance(); },
        []() -> AdbManger & { return AdbManger::instance(); },
        [](const QString &id, const QJsonObject &extraData) {
            HttpManager::instance().addEvent(id, extraData);
        },
        [](const QUrl &url) { QDesktopServices::openUrl(url); },
        QCoreApplication::applicationDirPath(),
        dataDir,
        [] { HttpManager::instance().sendEvents(false); },
        [](const QString &path, const QString &fileName) {
            HttpManager::instance().uploadFile(path, fileName);
        },
    };
    orb_ = new ORBManager(services, app);
    update_ = new ORBUpdate({cloud::host(), dataDir,
                             [](const QString &path) { shell_launch::startDetached(path, {}); },
                             cloud::builtPeerCheck()},
                            app);
    roadModel_ = new RoadModel(orb_->road(), orb_);
    QObject::connect(app, &QCoreApplication::aboutToQuit, app, [update = update_] {
        HttpManager::instance().disconnectAll();
        update->abandon();
    });
}

void Product::publish(QQmlApplicationEngine &engine) const
{
    engine.rootContext()->setContextProperty(QStringLiteral("orb"), orb_);
    engine.rootContext()->setContextProperty(QStringLiteral("orbupdate"), update_);
    engine.rootContext()->setContextProperty(QStringLiteral("orbroad"), roadModel_);
}

const ConnectionRoad &Product::road() const
{
    return orb_->road();
}

void initProductResources()
{
    qml::initResources();
    res::initResources();
}
