// What the pages read of the controller; each value stands where its part keeps
// it.
#include "checks/pc_check.h"
#include "checks/steam_watch.h"
#include "config/config_manager.h"
#include "controller/connection_flow.h"
#include "controller/link_mode.h"
#include "controller/orb_dependencies.h"
#include "controller/orb_manager.h"
#include "controller/streaming_settings.h"
#include "controller/vr_list_model.h"

namespace {

constexpr int shownSerialLength = 6;

} // namespace

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
    events_.modeViewed(mode_->kind(), verdict.canRun);
    return verdict.canRun ? AdviceHardware : NotCanRun;
}

ORBManager::SteamState ORBManager::steamState() const
{
    return static_cast<SteamState>(steamWatch_->state());
}

QString ORBManager::vrName() const
{
    if (!flow_->isConnected() || wired())
        return tr("星程之光眼镜");
    return tr("眼镜ID：") + flow_->connectedSerial().right(shownSerialLength);
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
    return deps_->config().fpsIndex();
}

bool ORBManager::audioStatus() const
{
    return deps_->config().audio();
}

bool ORBManager::tenbitEnc() const
{
    return deps_->config().tenBit();
}

bool ORBManager::fullRangeColor() const
{
    return deps_->config().fullRange();
}

bool ORBManager::enableHdr() const
{
    return deps_->config().hdr();
}

int ORBManager::definitionIndex() const
{
    return deps_->config().definitionIndex();
}

int ORBManager::encodeType() const
{
    return deps_->config().encodeIndex();
}

int ORBManager::widthIndex() const
{
    return deps_->config().width();
}

int ORBManager::heightIndex() const
{
    return deps_->config().height();
}

int ORBManager::bitRate() const
{
    return settings_->bitRate(mode_->kind());
}

int ORBManager::videoRatio() const
{
    return settings_->scale();
}

bool ORBManager::haslaunchSteamVR() const
{
    return steamWatch_->steamVRRunning();
}

bool ORBManager::haslaunchSteam() const
{
    return steamWatch_->steamRunning();
}

bool ORBManager::wired() const
{
    return isWired(mode_->kind());
}

bool ORBManager::hasEnumdevices() const
{
    return !flow_->connectedSerial().isEmpty();
}

bool ORBManager::av1Available() const
{
    return deps_->config().isAv1Capable(pc_->gpuName());
}

bool ORBManager::nvidiaAvailable() const
{
    return ConfigManager::isNvidia(pc_->gpuName());
}

bool ORBManager::isHasConnectedDevice()
{
    return flow_->wantedSerial() == model_->firstName();
}

bool ORBManager::isD2()
{
    return flow_->knownSerial().startsWith(QLatin1String("D2"));
}

bool ORBManager::isHideSelectPage()
{
    return modeChosen_;
}
