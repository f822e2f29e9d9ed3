#include "tests/controller/controller_fixture.h"

#include "link/command_protocol.h"

#include <QCoreApplication>
#include <QMetaMethod>

namespace {

SteamOptions withHome(SteamOptions options, const QString &dir)
{
    options.homeDir = dir;
    return options;
}

} // namespace

ServerInProcess::ServerInProcess(std::function<void()> restartSteamVR)
    : dispatcher_(
          {[this](const QString &text) { received.append(text); }, std::move(restartSteamVR)})
{
}

// Whether anybody is there who receives it.
bool ServerInProcess::receive(const QString &text)
{
    if (present)
        received.append(text);
    else
        reported_ = {};
    return present;
}

void ServerInProcess::report(const QString &line)
{
    if (!answers)
        return;
    const CommandDispatcher::Reported now = dispatcher_.processBatch({line.toStdString()});
    reported_.usb |= now.usb;
    reported_.list |= now.list;
}

void ServerInProcess::linkTo(const QString &serial, const QString &address)
{
    receive(command_protocol::linkTo(serial, address));
    for (HeadsetRecord &headset : headsets)
        headset.connected = headset.connected || (present && obeys && headset.serial == serial);
}

void ServerInProcess::disconnect(const QString &serial, const QString &address)
{
    receive(command_protocol::disconnect(serial, address));
    for (HeadsetRecord &headset : headsets) {
        if (present && headset.serial == serial)
            headset.connected = false;
    }
}

void ServerInProcess::requestHmdInfo()
{
    if (!receive(command_protocol::hmdInfoRequest()))
        return;
    QStringList items;
    if (!reportedId.isEmpty())
        items.append("deviceId:" + reportedId);
    for (const HeadsetRecord &headset : qAsConst(headsets)) {
        items.append(headset.serial + ';' + headset.address + ';' +
                     (headset.connected ? "true" : "false") + ";0");
    }
    report("HMDINFOBACK\t" + items.join('~'));
}

void ServerInProcess::sendWiredConnect(bool wired)
{
    if (receive(command_protocol::connectionRequest(wired)))
        report(usbConnected ? "DeviceConnectBack\ttrue" : "DeviceConnectBack\tfalse");
}

void ServerInProcess::setRegisterFirewallPending()
{
    dispatcher_.setRegisterFirewallPending();
}

bool ServerInProcess::isDeviceConnected() const
{
    return dispatcher_.isDeviceConnected();
}

QString ServerInProcess::deviceId() const
{
    return dispatcher_.deviceId();
}

HeadsetList ServerInProcess::hmdInfoList() const
{
    return present ? dispatcher_.headsets() : HeadsetList{HeadsetRecord()};
}

bool ServerInProcess::hasClient() const
{
    return present;
}

bool ServerInProcess::hasReported(bool wired) const
{
    return present && (wired ? reported_.usb : reported_.list);
}

PcFixture::PcFixture(const QString &dirName, const SteamOptions &options, const Describe &describe)
    : dir(dirName), pc((vr_path_file::writeWithoutDrivers(dirName), clock)),
      config(dirName, [] { return SystemInfo::hasVirtualCable(); }),
      steam((installSteam(pc, withHome(options, dirName)), describe ? describe(pc) : void(),
             SteamManager::Dependencies{clock, config, QStringLiteral("C:/KOLM"), dirName,
                                        [this](std::function<void()> work) {
                                            pool.push_back(std::move(work));
                                            return true;
                                        }}))
{
}

PcFixture::~PcFixture() = default;

void PcFixture::runPool()
{
    const std::vector<std::function<void()>> works = std::move(pool);
    pool.clear();
    for (const std::function<void()> &work : works)
        work();
}

void PcFixture::pass(int milliseconds)
{
    for (int left = milliseconds; left > 0; left -= 1000) {
        runPool();
        clock.advance(std::min(left, 1000));
        QCoreApplication::processEvents();
    }
}

class ControllerFixture::Dependencies final : public OrbDependencies
{
public:
    explicit Dependencies(ControllerFixture &fixture) : f_(fixture) {}

    Clock &clock() override { return f_.clock; }
    ConfigManager &config() override { return f_.config; }
    SteamManager &steam() override { return f_.steam; }
    SystemInfo &system() override { return f_.system; }
    HeadsetLink &link() override
    {
        f_.linkMade = true;
        return f_.server;
    }
    AdbManger &adb() override { return f_.adb; }
    QString applicationDir() const override { return f_.applicationDir; }
    QString dataDir() const override { return f_.dir; }
    void openUrl(const QUrl &url) override { f_.opened.append(url); }
    void report(const QString &id, const QJsonObject &data) override
    {
        f_.events.append({id, data});
    }
    void sendEvents() override { f_.sentAfter.append(f_.events.size()); }
    void upload(const QString &path, const QString &name,
                std::function<void(bool taken)> done) override
    {
        f_.uploadDone = std::move(done);
        f_.uploads.append({path, name});
    }

private:
    ControllerFixture &f_;
};

ControllerFixture::ControllerFixture(const QString &dirName, const SteamOptions &options,
                                     const Describe &describe)
    : PcFixture(dirName, options, describe)
{
}

ControllerFixture::~ControllerFixture() = default;

ORBManager &ControllerFixture::orb()
{
    if (orb_)
        return *orb_;
    orb_ = std::make_unique<ORBManager>(std::make_unique<Dependencies>(*this));

    const auto note = [this](const char *name) { return [this, name] { emitted << name; }; };
    ORBManager *orb = orb_.get();
    QObject::connect(orb, &ORBManager::systemInfoChange, note("systemInfoChange"));
    QObject::connect(orb, &ORBManager::pcHardwareChange, note("pcHardwareChange"));
    QObject::connect(orb, &ORBManager::showUpdateGPUPage, note("showUpdateGPUPage"));
    QObject::connect(orb, &ORBManager::steamStateChange, note("steamStateChange"));
    QObject::connect(orb, &ORBManager::vrIsConnectChange, note("vrIsConnectChange"));
    QObject::connect(orb, &ORBManager::handleEvent, note("handleEvent"));
    QObject::connect(orb, &ORBManager::av1AvailableChanged, note("av1AvailableChanged"));
    QObject::connect(orb, &ORBManager::showPowerTip, note("showPowerTip"));
    QObject::connect(orb, &ORBManager::closePowerTip, note("closePowerTip"));
    QObject::connect(orb, &ORBManager::effectChange, note("effectChange"));
    QObject::connect(orb, &ORBManager::closeExe, note("closeExe"));
    QObject::connect(orb, &ORBManager::showMoreHMD, note("showMoreHMD"));
    QObject::connect(orb, &ORBManager::hasEnumdevicesChange, note("hasEnumdevicesChange"));
    QObject::connect(orb, &ORBManager::showNetWorkSetting, note("showNetWorkSetting"));
    QObject::connect(orb, &ORBManager::haslaunchSteamVRChange, note("haslaunchSteamVRChange"));
    QObject::connect(orb, &ORBManager::haslaunchSteamChange, note("haslaunchSteamChange"));
    QObject::connect(orb, &ORBManager::wiredChange, note("wiredChange"));
    QObject::connect(orb, &ORBManager::showToast, [this](const QString &text, int duration) {
        emitted << QStringLiteral("showToast(%1,%2)").arg(text).arg(duration);
    });
    QObject::connect(orb, &ORBManager::showUseProtPage, [this](const QString &names) {
        emitted << QStringLiteral("showUseProtPage(%1)").arg(names);
    });
    QObject::connect(orb, &ORBManager::showVrList, [this](bool connected, bool byUser) {
        emitted << QStringLiteral("showVrList(%1,%2)")
                       .arg(QVariant(connected).toString(), QVariant(byUser).toString());
    });
    return *orb_;
}

void ControllerFixture::close()
{
    orb_.reset();
}

QStringList ControllerFixture::toasts() const
{
    return emitted.filter(QStringLiteral("showToast("));
}
