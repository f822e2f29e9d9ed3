#include "controller/streaming_settings.h"

#include "base/clock.h"
#include "config/config_manager.h"
#include "steamvr/steam_manager.h"

#include <QCoreApplication>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto pauseAfterStop = 500ms;
constexpr auto startAgainDelay = 10s;

} // namespace

StreamingSettings::StreamingSettings(Clock &clock, ConfigManager &config, SteamManager &steam,
                                     Mutex &switchLock, QObject *parent)
    : QObject(parent), clock_(clock), config_(config), steam_(steam), switchLock_(switchLock)
{
}

SettingsChoice StreamingSettings::current() const
{
    SettingsChoice choice;
    choice.definitionIndex = config_.definitionIndex();
    choice.fpsIndex = config_.fpsIndex();
    choice.encodeIndex = config_.encodeIndex();
    choice.audio = config_.audio();
    choice.tenBit = config_.tenBit();
    choice.fullRange = config_.fullRange();
    choice.hdr = config_.hdr();
    return choice;
}

int StreamingSettings::bitRate(LinkKind link) const
{
    return config_.loadDeviceSettings(false, 0)
        .value(isWired(link) ? QLatin1String("bitRate_wired") : QLatin1String("bitRate"))
        .toString()
        .toInt();
}

int StreamingSettings::scale() const
{
    return config_.loadDeviceSettings(false, 0).value(QLatin1String("scale")).toString().toInt();
}

void StreamingSettings::apply(const SettingsChoice &choice, LinkKind link)
{
    config_.applyStreamingSettings(choice, link);
}

void StreamingSettings::restartAround(const std::function<void()> &write)
{
    const MutexLock lock(switchLock_);
    steam_.stopSteamVR();
    clock_.sleep(pauseAfterStop);
    write();
    clock_.singleShot(startAgainDelay, this, [this] { steam_.startSteamVR(); });
}

void StreamingSettings::setEffects(const SettingsChoice &choice, LinkKind link,
                                   const QString &serial)
{
    emit toast(QCoreApplication::translate("ORBManager", "steamVR重启设置中，请勿操作"), 15000);
    restartAround([&] {
        config_.saveDeviceSettings(serial);
        apply(choice, link);
    });
}

void StreamingSettings::setCustom(int scale, int bitRate, LinkKind link, const QString &serial)
{
    // Not saved: it goes to the file with the restart that follows.
    config_.setCustomize(scale, bitRate, isWired(link), ConfigManager::modelOf(serial));
}

void StreamingSettings::setBitRate(int bitRate, LinkKind link, const QString &serial)
{
    config_.setBitRate(bitRate, isWired(link), ConfigManager::modelOf(serial));
    config_.saveDeviceSettings(serial);
}
