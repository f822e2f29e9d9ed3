#include "controller/orb_manager.h"

#include "base/clock.h"
#include "checks/check_runner.h"
#include "checks/firewall_step.h"
#include "checks/pc_check.h"
#include "checks/steam_watch.h"
#include "checks/table.h"
#include "config/config_manager.h"
#include "config/recent_headsets.h"
#include "controller/connection_flow.h"
#include "controller/connection_stages.h"
#include "controller/connection_status.h"
#include "controller/connection_tracker.h"
#include "controller/feedback_status.h"
#include "controller/help_links.h"
#include "controller/link_mode.h"
#include "controller/orb_dependencies.h"
#include "controller/poll.h"
#include "controller/steam_starter.h"
#include "controller/streaming_settings.h"
#include "controller/unwritten_files.h"
#include "controller/usb_headset.h"
#include "controller/vr_list_model.h"
#include "steamvr/steam_manager.h"
#include "sysinfo/system_info.h"
#include "usb/adb_manger.h"

#include <QDebug>
#include <QLocale>
#include <QUrl>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto pollInterval = 5s;
constexpr auto pauseAfterStop = 1s;
constexpr int steamToastDuration = 2000; // ms
constexpr int signerToastDuration = 5000;

} // namespace

ORBManager::ORBManager(std::unique_ptr<OrbDependencies> dependencies, QObject *parent)
    : QObject(parent), deps_(std::move(dependencies)), startTime_(deps_->clock().now()),
      events_([this](const QString &id, const QJsonObject &data) { deps_->report(id, data); }),
      pc_(std::make_unique<PcCheck>(deps_->system()))
{
    watchWriting();
    // Whatever an earlier session left running would keep our driver and the
    // control port busy.
    deps_->steam().stopSteamVR();
    captureStartSettings();
    // Switched off: it needs the folder of a SteamVR to look for.
    firewall_step::run(QString(), deps_->steam(),
                       [this]() -> HeadsetLink & { return deps_->link(); });
    const auto recent = recent_headsets::loadUnlessHeld(deps_->dataDir());
    recentHeld_ = !recent;
    makeParts();
    connectParts();
    flow_->setRecentHeadsets(recent.value_or(QStringList()));

    const LinkKind stored = deps_->config().link();
    qInfo().noquote().nospace() << "getWiredOrWireless : " << static_cast<int>(stored);
    if (stored != LinkKind::NotChosen) {
        modeChosen_ = true;
        setWiredOrWireless(isWired(stored));
    }
    events_.programStarted();
}

void ORBManager::makeParts()
{
    Clock &clock = deps_->clock();
    ConfigManager &config = deps_->config();
    SteamManager &steam = deps_->steam();
    SystemInfo &system = deps_->system();

    model_ = new VRListModel(this);
    stages_ = new ConnectionStages(this);
    status_ = new ConnectionStatus(this);
    feedback_ = new FeedbackStatus(this);
    flow_ = new ConnectionFlow(clock, config, system, *model_, this);
    checks_ = new CheckRunner(clock, checks::table(), this);
    steamWatch_ = new SteamWatch(steam, this);
    steamStarter_ = new SteamStarter({clock, steam, *steamWatch_}, deps_->applicationDir(), this);
    settings_ = new StreamingSettings(clock, config, steam, switchLock_, this);
    usb_ = new UsbHeadset([this]() -> AdbManger & { return deps_->adb(); }, this);
    mode_ = new LinkMode(
        {clock, config, *settings_, *flow_, *usb_,
         [this](const SettingsChoice &choice, LinkKind link) { startRun(choice, link); }},
        this);
    tracker_ = new ConnectionTracker(
        {clock, *steamWatch_, *flow_, *usb_, *stages_, *status_, checks_->facts()}, this);
    poll_ = new Poll({*steamWatch_, *flow_, system, *usb_, *tracker_, *checks_}, this);
}

ORBManager::~ORBManager()
{
    deps_->steam().stopSteamVR();
    deps_->clock().sleep(pauseAfterStop);
    storeSettings();
}

void ORBManager::endSession()
{
    deps_->steam().leaveToSystem();
    storeSettings();
}

void ORBManager::storeSettings()
{
    deps_->config().saveDeviceSettings(flow_->knownSerial());
    deps_->config().writeSessionSerial();
    storeRecentHeadsets();
    deps_->config().setNotWritten({});
}

void ORBManager::captureStartSettings()
{
    const QJsonObject stored = deps_->config().loadDeviceSettings(false, 0);
    UsageEvents::StartSettings start;
    start.definitionIndex = stored.value(QLatin1String("definitionIndex")).toInt(0);
    start.highFrameRate = stored.value(QLatin1String("fps")).toString() != QLatin1String("72");
    start.audio = stored.value(QLatin1String("audio")).toBool(false);
    events_.setStartSettings(start);
}

void ORBManager::connectParts()
{
    connect(
        this, &ORBManager::handleEvent, poll_, [this] { poll_->run(mode_->kind()); },
        Qt::DirectConnection);
    connect(&deps_->steam(), &SteamManager::steamAppChange, this,
            [this](int seconds, const QString &appName) {
                events_.steamAppEnded(seconds, appName, mode_->kind());
            });
    connect(&deps_->steam(), &SteamManager::showToast, this,
            [this](const QString &tips) { emit showToast(tips, steamToastDuration); });

    connect(flow_, &ConnectionFlow::connectionChanged, this, &ORBManager::vrIsConnectChange);
    // Not only at the end: then nobody could be told that it cannot be done.
    connect(flow_, &ConnectionFlow::headsetAdded, this, &ORBManager::storeRecentHeadsets);
    connect(flow_, &ConnectionFlow::listShown, this, &ORBManager::showVrList);
    connect(flow_, &ConnectionFlow::severalHeadsets, this, &ORBManager::showMoreHMD);
    connect(flow_, &ConnectionFlow::stepDue, this, &ORBManager::handleEvent);
    connect(flow_, &ConnectionFlow::settingsLoaded, this, [this] {
        emit av1AvailableChanged();
        emit effectChange();
    });

    connect(steamWatch_, &SteamWatch::stateChanged, this, &ORBManager::steamStateChange);
    connect(steamWatch_, &SteamWatch::steamRunningChanged, this, &ORBManager::haslaunchSteamChange);
    connect(steamWatch_, &SteamWatch::steamVRRunningChanged, this,
            &ORBManager::haslaunchSteamVRChange);
    connect(steamStarter_, &SteamStarter::toast, this, &ORBManager::showToast);
    connect(checks_, &CheckRunner::actionWanted, this, &ORBManager::carryOut);
    connect(settings_, &StreamingSettings::toast, this, &ORBManager::showToast);
    connect(mode_, &LinkMode::toast, this, &ORBManager::showToast);
    connect(mode_, &LinkMode::wiredChanged, this, &ORBManager::wiredChange);
    connect(usb_, &UsbHeadset::attached, this, &ORBManager::onUsbAttached);
    connect(usb_, &UsbHeadset::detached, this, &ORBManager::onUsbDetached);
    connect(usb_, &UsbHeadset::unreachable, this, &ORBManager::onUsbUnreachable);

    // After the parts above know.
    connect(mode_, &LinkMode::wiredChanged, tracker_,
            [this] { tracker_->linkChanged(mode_->kind()); });
    connect(usb_, &UsbHeadset::attached, tracker_, &ConnectionTracker::update);
    connect(usb_, &UsbHeadset::detached, tracker_, &ConnectionTracker::update);
    connect(&deps_->steam(), &SteamManager::steamVRStopped, tracker_,
            &ConnectionTracker::steamVRStopped);
    connect(&deps_->steam(), &SteamManager::steamVRStarted, tracker_,
            &ConnectionTracker::steamVRStarted);

    connect(poll_, &Poll::toast, this, &ORBManager::showToast);
    connect(poll_, &Poll::publicNetwork, this, &ORBManager::showNetWorkSetting);
    connect(poll_, &Poll::powerTip, this, [this](bool show) {
        if (show)
            emit showPowerTip();
        else
            emit closePowerTip();
    });
}

// From here on the program works: what SteamVR will read is written before it
// is started, and whoever is polled is there before the timer.
void ORBManager::startRun(const SettingsChoice &choice, LinkKind link)
{
    settings_->apply(choice, link);
    checkSystem();
    flow_->setLink(&deps_->link());
    checks_->facts().controlPort = deps_->link().controlPort();
    steamStarter_->startUp();
    pollTimer_ = deps_->clock().startTimer(pollInterval, this);
    polling_ = true;
    steamStarter_->scheduleFollowUps();
    startChecks();
    qInfo("init end");
}

void ORBManager::checkSystem()
{
    pc_->compare();
    emit systemInfoChange();
    pc_->rememberNames();
    emit pcHardwareChange();
}

void ORBManager::startChecks()
{
    Facts &facts = checks_->facts();
    facts.cpuName = pc_->cpuName();
    facts.gpuName = pc_->gpuName();
    facts.steamInstalled = steamWatch_->steamInstalled();
    checks_->start();
}

CheckModel &ORBManager::findings()
{
    return checks_->model();
}

void ORBManager::carryOut(const checks::Action &action)
{
    using checks::Action;
    switch (action.kind) {
    case Action::OpenUrl:
        deps_->openUrl(QUrl(QString::fromLatin1(action.target)));
        break;
    case Action::InstallSteam:
        gotoWeb(SteamUrl);
        break;
    case Action::LaunchSteam:
    case Action::LaunchSteamVR:
        launchSteam(action.kind == Action::LaunchSteamVR);
        break;
    case Action::OpenGuide:
        gotoWeb(UserHelperUrl);
        break;
    default:
        break; // the checks' own affair
    }
}

void ORBManager::timerEvent(QTimerEvent *)
{
    if (flow_->requestReport(mode_->kind()))
        emit handleEvent();
}

void ORBManager::onUsbAttached(const QString &serial)
{
    if (!wired())
        return;
    deps_->steam().setRestartSerial(serial);
    flow_->usbAttached(serial);
    emit hasEnumdevicesChange();
}

void ORBManager::onUsbDetached()
{
    if (!wired())
        return;
    flow_->usbDetached();
    emit hasEnumdevicesChange();
}

void ORBManager::onUsbUnreachable()
{
    if (wired())
        emit showToast(tr("设备连接失败，请插拔眼镜再试"), 2000);
}

void ORBManager::setWiredOrWireless(bool wired)
{
    mode_->choose(linkKind(wired));
}

void ORBManager::gotoWeb(ORBManager::Urls url)
{
    switch (url) {
    case SteamUrl:
        deps_->openUrl(help_links::steamDownload());
        break;
    case UserHelperUrl:
    case SteamHelperUrl:
        if (const QUrl guide =
                help_links::userGuide(QLocale::system().language(), deps_->applicationDir());
            !guide.isEmpty())
            deps_->openUrl(guide);
        break;
    }
}

void ORBManager::setEffects(int definition, int fps, int encodType, bool audiostatus, bool tenbit,
                            bool fullRange, bool Hdr)
{
    SettingsChoice choice;
    choice.definitionIndex = definition;
    choice.fpsIndex = fps;
    choice.encodeIndex = encodType;
    choice.audio = audiostatus;
    choice.tenBit = tenbit;
    choice.fullRange = fullRange;
    choice.hdr = Hdr;
    settings_->setEffects(choice, mode_->kind(), flow_->knownSerial());
}

void ORBManager::launchSteam(bool isVR)
{
    steamStarter_->launch(isVR);
}

void ORBManager::connectVR(QString VRname, QString ip, bool vrState)
{
    flow_->connectHeadset(VRname, ip, vrState);
    tracker_->update();
}

void ORBManager::setupNewVersion()
{
    emit closeExe();
}

void ORBManager::stopSteam()
{
    if (polling_) {
        deps_->clock().killTimer(pollTimer_, this);
        polling_ = false;
    }
    deps_->steam().stopSteamVR();
}

void ORBManager::reportstreamMode(bool wired, bool isSwitch)
{
    events_.streamMode(linkKind(wired), isSwitch);
}

void ORBManager::openNetworkSetting()
{
    deps_->openUrl(QUrl(QStringLiteral("ms-settings:network")));
}

bool ORBManager::installAudio()
{
    if (SystemInfo::hasVirtualCable())
        return true;
    SystemInfo::installVirtualCable(deps_->applicationDir(), [this](const QString &signer) {
        emit showToast(signer.isEmpty() ? tr("虚拟声卡的安装程序没有有效的签名，未启动")
                                        : tr("即将启动由“%1”签名的安装程序").arg(signer),
                       signerToastDuration);
    });
    return false;
}

QString ORBManager::trimmedString(QString str)
{
    return str.trimmed();
}

void ORBManager::closeApp()
{
    events_.programClosed(startTime_.secsTo(deps_->clock().now()));
    deps_->sendEvents();
}

void ORBManager::shutdownADB()
{
    usb_->stop();
}

void ORBManager::checkPortUsage()
{
    const QStringList blockers = PcCheck::portBlockers();
    checks_->facts().portHolders = blockers;
    checks_->judge();
    if (!blockers.isEmpty())
        emit showUseProtPage(blockers.join(QStringLiteral(", ")));
}

void ORBManager::setVideoQuilty(int scale, int bitrate)
{
    settings_->setCustom(scale, bitrate, mode_->kind(), flow_->knownSerial());
}

void ORBManager::setVideoBitRate(int bitrate)
{
    settings_->setBitRate(bitrate, mode_->kind(), flow_->knownSerial());
}
