#include "tests/qml/fake_orb.h"

namespace {

QString word(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

void FakeHeadsets::fill(const std::vector<Row> &rows)
{
    HeadsetList found;
    QStringList recent;
    // The last reported one comes first.
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        found.push_back({row->name, row->address, row->connected});
        if (row->recent)
            recent.append(row->name);
    }
    refill(found, recent);
}

FakeOrb::FakeOrb()
{
    connect(&headsets, &FakeHeadsets::modelReset, this, &FakeOrb::updateConnection);
    connect(this, &FakeOrb::showVrList, this, [this](bool, bool hasDisConnect) {
        letGo_ = hasDisConnect;
        updateConnection();
    });
    updateConnection();
}

void FakeOrb::updateConnection()
{
    connection::Facts facts;
    facts.server = true;
    facts.wired = wired_;
    facts.connected = vrIsConnect_;
    facts.found = wired_ ? enumerated_ : headsets.rowCount() > 0;
    facts.wanted = wired_ ? enumerated_ : headsets.isReachable(reconnectSerial);
    facts.letGo = letGo_;
    connection.set(connection::stateOf(facts), facts.found || facts.connected);
}

void FakeOrb::setWired(bool wired)
{
    note("wired=" + word(wired));
    if (wired_ != wired)
        becomeWired(wired);
}

FakeOrb::HardwareState FakeOrb::pcHardware()
{
    ++hardwareReads;
    if (onHardwareRead)
        onHardwareRead();
    return hardware_;
}

void FakeOrb::becomeSystemInfo(const QString &all, const QString &simple)
{
    systemInfo_ = all;
    simplySystemInfo_ = simple;
    emit systemInfoChange();
}

void FakeOrb::becomeHardware(HardwareState hardware)
{
    hardware_ = hardware;
    emit pcHardwareChange();
}

void FakeOrb::becomeSettings(const Settings &settings)
{
    settings_ = settings;
    emit av1AvailableChanged();
    emit effectChange();
}

void FakeOrb::becomeSteamState(SteamState state)
{
    steamState_ = state;
    emit steamStateChange();
}

void FakeOrb::becomeSteam(bool running)
{
    steam_ = running;
    emit haslaunchSteamChange();
}

void FakeOrb::becomeSteamVR(bool running)
{
    steamVR_ = running;
    emit haslaunchSteamVRChange();
}

void FakeOrb::becomeConnected(bool connected, const QString &vrName)
{
    vrIsConnect_ = connected;
    vrName_ = vrName.isEmpty() ? zh("星程之光眼镜") : vrName;
    emit vrIsConnectChange();
    updateConnection();
}

void FakeOrb::becomeEnumerated(bool enumerated)
{
    enumerated_ = enumerated;
    emit hasEnumdevicesChange();
    updateConnection();
}

void FakeOrb::becomeWired(bool wired)
{
    wired_ = wired;
    emit wiredChange();
    updateConnection();
}

void FakeOrb::note(const QString &call)
{
    calls.append(call);
    if (onCall)
        onCall(call);
}

void FakeOrb::gotoWeb(FakeOrb::Urls url)
{
    note(QStringLiteral("gotoWeb %1").arg(url));
}

void FakeOrb::sendFeecback(QString content, QString id)
{
    note(QStringLiteral("sendFeecback '%1' '%2'").arg(content, id));
    if (onFeedback)
        onFeedback();
}

void FakeOrb::setEffects(int definition, int fps, int encodType, bool audiostatus, bool tenbit,
                         bool fullRange, bool Hdr)
{
    note(QStringLiteral("setEffects %1 %2 %3 ").arg(definition).arg(fps).arg(encodType) +
         QStringList{word(audiostatus), word(tenbit), word(fullRange), word(Hdr)}.join(' '));
}

void FakeOrb::launchSteam(bool isVR)
{
    note("launchSteam " + word(isVR));
}

void FakeOrb::connectVR(QString VRname, QString ip, bool vrState)
{
    note(QStringLiteral("connectVR '%1' '%2' %3").arg(VRname, ip, word(vrState)));
    letGo_ = !vrState;
    updateConnection();
}

void FakeOrb::setupNewVersion()
{
    note(QStringLiteral("setupNewVersion"));
    emit closeExe();
}

void FakeOrb::stopSteam()
{
    note(QStringLiteral("stopSteam"));
}

void FakeOrb::reportstreamMode(bool wired, bool isSwitch)
{
    note(QStringLiteral("reportstreamMode %1 %2").arg(word(wired), word(isSwitch)));
}

void FakeOrb::openNetworkSetting()
{
    note(QStringLiteral("openNetworkSetting"));
}

bool FakeOrb::installAudio()
{
    note(QStringLiteral("installAudio"));
    return audioInstalled;
}

QString FakeOrb::trimmedString(QString str)
{
    return str.trimmed();
}

void FakeOrb::closeApp()
{
    note(QStringLiteral("closeApp"));
}

void FakeOrb::shutdownADB()
{
    note(QStringLiteral("shutdownADB"));
}

void FakeOrb::checkPortUsage()
{
    note(QStringLiteral("checkPortUsage"));
    if (!portHolders.isEmpty())
        emit showUseProtPage(portHolders);
}

void FakeOrb::setVideoQuilty(int scale, int bitrate)
{
    note(QStringLiteral("setVideoQuilty %1 %2").arg(scale).arg(bitrate));
}

void FakeOrb::setVideoBitRate(int bitrate)
{
    note(QStringLiteral("setVideoBitRate %1").arg(bitrate));
}

bool FakeOrb::isHasConnectedDevice() const
{
    return reconnectSerial == headsets.firstName();
}

bool FakeOrb::isHideSelectPage()
{
    note(QStringLiteral("isHideSelectPage"));
    return hideSelectPage;
}

bool FakeUpdate::setup()
{
    orb_.calls.append(QStringLiteral("setup"));
    return setupSucceeds;
}
