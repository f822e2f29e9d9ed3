#include "controller/orb_manager.h"

#include "base/clock.h"
#include "base/file_io.h"
#include "checks/firewall_step.h"
#include "checks/pc_check.h"
#include "config/config_manager.h"
#include "config/recent_headsets.h"
#include "controller/connection_flow.h"
#include "controller/connection_road.h"
#include "controller/feedback.h"
#include "controller/help_links.h"
#include "controller/link_mode.h"
#include "controller/poll.h"
#include "controller/readiness.h"
#include "controller/streaming_settings.h"
#include "controller/vr_list_model.h"
#include "steamvr/steam_manager.h"
#include "sysinfo/system_info.h"
#include "usb/adb_manger.h"

#include <QDebug>
#include <QLocale>
#include <QUrl>

namespace {

constexpr int pollInterval = 5000;       // ms
constexpr int pauseAfterStop = 1000;     // ms
constexpr int steamToastDuration = 2000; // ms
constexpr int shownSerialLength = 6;
constexpr int storedWired = 1;

} // namespace

ORBManager::ORBManager(Services services, QObject *parent)
    : QObject(parent), services_(std::move(services)), startTime_(services_.clock.now()),
      events_(services_.report), pc_(std::make_unique<PcCheck>(services_.system))
{
    // Whatever an earlier session left running would keep our driver and the
    // control port busy.
    services_.steam.stopSteamVR();
    captureStartSettings();
    // Switched off: it needs the folder of a SteamVR to look for.
    firewall_step::run(QString(), services_.steam, services_.link);
    const QStringList recent = recent_headsets::load(services_.dataDir);

    model_ = new VRListModel(this);
    road_ = new ConnectionRoad(this);
    flow_ = new ConnectionFlow(services_.clock, services_.config, services_.system, *model_, this);
    flow_->setRecentHeadsets(recent);
    readiness_ = new Readiness(services_.clock, services_.steam, services_.applicationDir, this);
    settings_ = new StreamingSettings(services_.clock, services_.config, services_.steam,
                                      switchLock_, this);
    mode_ = new LinkMode(services_.clock, services_.config, *settings_,
                         {[this] { hookAdb(); }, [this] { startUp(); },
                          [this] { services_.adb().checkDevice(); },
                          [this] {
                              flow_->forgetHeadset();
                              services_.adb().killAdb();
                          }},
                         this);
    poll_ = new Poll({services_.clock, *readiness_, *flow_, *road_, services_.system,
                      [this] { return mode_->wired(); }, [this] { services_.adb().checkDevice(); }},
                     this);
    connectParts();

    const int stored = services_.config.wiredOrWireless();
    qInfo().noquote().nospace() << "getWiredOrWireless : " << stored;
    if (stored != 0) {
        modeChosen_ = true;
        setWiredOrWireless(stored == storedWired);
    }
    events_.programStarted();
}

ORBManager::~ORBManager()
{
    services_.steam.stopSteamVR();
    services_.clock.sleep(pauseAfterStop);
    services_.config.saveDeviceSettings(flow_->currentSerial());
    services_.config.writeSessionSerial();
    recent_headsets::save(services_.dataDir, flow_->recentHeadsets());
}

void ORBManager::captureStartSettings()
{
    const QJsonObject stored = services_.config.loadDeviceSettings(false, 0);
    UsageEvents::StartSettings start;
    start.definitionIndex = stored.value(QLatin1String("definitionIndex")).toInt(0);
    start.highFrameRate = stored.value(QLatin1String("fps")).toString() != QLatin1String("72");
    start.audio = stored.value(QLatin1String("audio")).toBool(false);
    events_.setStartSettings(start);
}

void ORBManager::connectParts()
{
    connect(this, &ORBManager::handleEvent, poll_, &Poll::run, Qt::DirectConnection);
    connect(&services_.steam, &SteamManager::steamAppChange, this,
            [this](int seconds, const QString &appName) {
                events_.steamAppEnded(seconds, appName, mode_->wired());
            });
    connect(&services_.steam, &SteamManager::showToast, this,
            [this](const QString &tips) { emit showToast(tips, steamToastDuration); });

    connect(flow_, &ConnectionFlow::connectionChanged, this, &ORBManager::vrIsConnectChange);
    connect(flow_, &ConnectionFlow::listShown, this, &ORBManager::showVrList);
    connect(flow_, &ConnectionFlow::severalHeadsets, this, &ORBManager::showMoreHMD);
    connect(flow_, &ConnectionFlow::lookAgain, this, &ORBManager::handleEvent);
    connect(flow_, &ConnectionFlow::settingsLoaded, this, [this] {
        emit av1AvailableChanged();
        emit effectChange();
    });

    connect(readiness_, &Readiness::stateChanged, this, &ORBManager::steamStateChange);
    connect(readiness_, &Readiness::steamRunningChanged, this, &ORBManager::haslaunchSteamChange);
    connect(readiness_, &Readiness::steamVRRunningChanged, this,
            &ORBManager::haslaunchSteamVRChange);
    connect(readiness_, &Readiness::toast, this, &ORBManager::showToast);
    connect(settings_, &StreamingSettings::toast, this, &ORBManager::showToast);
    connect(mode_, &LinkMode::toast, this, &ORBManager::showToast);
    connect(mode_, &LinkMode::wiredChanged, this, &ORBManager::wiredChange);

    connect(poll_, &Poll::toast, this, &ORBManager::showToast);
    connect(poll_, &Poll::publicNetwork, this, &ORBManager::showNetWorkSetting);
    connect(poll_, &Poll::powerTip, this, [this](bool show) {
        if (show)
            emit showPowerTip();
        else
            emit closePowerTip();
    });
}

void ORBManager::hookAdb()
{
    AdbManger &adb = services_.adb();
    connect(&adb, &AdbManger::deviceConnect, this, &ORBManager::onUsbHeadset);
    connect(&adb, &AdbManger::showAdbTipToast, this, &ORBManager::onAdbTip);
}

void ORBManager::startUp()
{
    checkSystem();
    flow_->setLink(&services_.link());
    readiness_->startUp();
    pollTimer_ = services_.clock.startTimer(pollInterval, this);
    polling_ = true;
    readiness_->planLooks();
    qInfo("init end");
}

void ORBManager::checkSystem()
{
    pc_->look();
    emit systemInfoChange();
    pc_->rememberNames();
    emit pcHardwareChange();
}

void ORBManager::timerEvent(QTimerEvent *)
{
    if (flow_->ask(mode_->wired()))
        emit handleEvent();
}

void ORBManager::onUsbHeadset(bool connect, const QString &serial)
{
    if (!mode_->wired())
        return;
    if (connect) {
        flow_->setCurrentSerial(serial);
        services_.steam.setRestartSerial(serial);
    }
    flow_->usbHeadset(serial);
    emit hasEnumdevicesChange();
}

void ORBManager::onAdbTip()
{
    if (mode_->wired())
        emit showToast(tr("设备连接失败，请插拔眼镜再试"), 2000);
}

QString ORBManager::systemInfo() const
{
    return pc_->systemInfo();
}

QString ORBManager::simplySystemInfo() const
{
    return pc_->simplySystemInfo();
}

ORBManager::HardwareState ORBManager::pcHardware()
{
    const PcCheck::Verdict verdict = pc_->judge();
    if (verdict.driverTooOld)
        emit showUpdateGPUPage();
    // Each reading counts, also those by which a page keeps itself current.
    events_.modeViewed(mode_->wired(), verdict.canRun);
    return verdict.canRun ? AdviceHardware : NotCanRun;
}

ORBManager::SteamState ORBManager::steamState() const
{
    return static_cast<SteamState>(readiness_->state());
}

QString ORBManager::vrName() const
{
    if (!flow_->isConnected() || mode_->wired())
        return tr("星程之光眼镜");
    return tr("眼镜ID：") + flow_->headsetSerial().right(shownSerialLength);
}

bool ORBManager::vrIsConnect() const
{
    return flow_->isConnected();
}

QVariant ORBManager::vrLists() const
{
    return QVariant::fromValue(model_);
}

int ORBManager::fpsIndex() const
{
    return services_.config.fpsIndex();
}

bool ORBManager::audioStatus() const
{
    return services_.config.audio();
}

bool ORBManager::tenbitEnc() const
{
    return services_.config.tenBit();
}

bool ORBManager::fullRangeColor() const
{
    return services_.config.fullRange();
}

bool ORBManager::enableHdr() const
{
    return services_.config.hdr();
}

int ORBManager::definitionIndex() const
{
    return services_.config.definitionIndex();
}

int ORBManager::encodeType() const
{
    return services_.config.encodeIndex();
}

int ORBManager::widthIndex() const
{
    return services_.config.width();
}

int ORBManager::heightIndex() const
{
    return services_.config.height();
}

int ORBManager::bitRate() const
{
    return settings_->bitRate(mode_->wired());
}

int ORBManager::videoRatio() const
{
    return settings_->scale();
}

bool ORBManager::haslaunchSteamVR() const
{
    return readiness_->steamVRRunning();
}

bool ORBManager::haslaunchSteam() const
{
    return readiness_->steamRunning();
}

bool ORBManager::wired() const
{
    return mode_->wired();
}

bool ORBManager::hasEnumdevices() const
{
    return !flow_->headsetSerial().isEmpty();
}

bool ORBManager::av1Available() const
{
    return services_.config.isAv1Capable(pc_->gpuName());
}

bool ORBManager::nvidiaAvailable() const
{
    return ConfigManager::isNvidia(pc_->gpuName());
}

void ORBManager::setWiredOrWireless(bool wired)
{
    mode_->choose(wired);
}

void ORBManager::gotoWeb(ORBManager::Urls url)
{
    switch (url) {
    case SteamUrl:
        services_.openUrl(help_links::steamDownload());
        break;
    case UserHelperUrl:
    case SteamHelperUrl:
        services_.openUrl(help_links::userGuide(QLocale::system().language()));
        break;
    }
}

void ORBManager::sendFeecback(QString content, QString id)
{
    const QString path = services_.dataDir + QStringLiteral("/feedback.json");
    const QByteArray document = feedback::document(content, id, services_.system.toJson());
    if (replaceFile(path, document) != WriteResult::Ok) {
        qInfo("feedback.json cannot be written");
        return;
    }
    if (services_.upload)
        services_.upload(path, feedback::name(services_.clock.now(), flow_->currentSerial(), id));
}

void ORBManager::setEffects(int definition, int fps, int encodType, bool audiostatus, bool tenbit,
                            bool fullRange, bool Hdr)
{
    settings_->setEffects({definition, fps, encodType, audiostatus, tenbit, fullRange, Hdr},
                          mode_->wired(), flow_->currentSerial());
}

void ORBManager::launchSteam(bool isVR)
{
    readiness_->launch(isVR);
}

void ORBManager::connectVR(QString VRname, QString ip, bool vrState)
{
    flow_->connectHeadset(VRname, ip, vrState);
}

void ORBManager::setupNewVersion()
{
    emit closeExe();
}

void ORBManager::stopSteam()
{
    if (polling_) {
        services_.clock.killTimer(pollTimer_, this);
        polling_ = false;
    }
    services_.steam.stopSteamVR();
}

bool ORBManager::isHasConnectedDevice()
{
    return flow_->reconnectSerial() == model_->firstName();
}

void ORBManager::reportstreamMode(bool wired, bool isSwitch)
{
    events_.streamMode(wired, isSwitch);
}

void ORBManager::openNetworkSetting()
{
    services_.openUrl(QUrl(QStringLiteral("ms-settings:network")));
}

bool ORBManager::installAudio()
{
    if (SystemInfo::hasVirtualCable())
        return true;
    SystemInfo::installVirtualCable(services_.applicationDir);
    return false;
}

QString ORBManager::trimmedString(QString str)
{
    return str.trimmed();
}

void ORBManager::closeApp()
{
    events_.programClosed(startTime_.secsTo(services_.clock.now()));
    if (services_.sendEvents)
        services_.sendEvents();
}

void ORBManager::shutdownADB()
{
    services_.adb().killAdb();
}

void ORBManager::checkPortUsage()
{
    const QStringList blockers = PcCheck::portBlockers();
    if (!blockers.isEmpty())
        emit showUseProtPage(blockers.join(QStringLiteral(", ")));
}

bool ORBManager::isD2()
{
    return flow_->currentSerial().startsWith(QLatin1String("D2"));
}

void ORBManager::setVideoQuilty(int scale, int bitrate)
{
    settings_->setCustom(scale, bitrate, mode_->wired(), flow_->currentSerial());
}

void ORBManager::setVideoBitRate(int bitrate)
{
    settings_->setBitRate(bitrate, mode_->wired(), flow_->currentSerial());
}

bool ORBManager::isHideSelectPage()
{
    return modeChosen_;
}
