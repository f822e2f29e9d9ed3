#include "controller/streaming_settings.h"

#include "base/clock.h"
#include "config/config_manager.h"
#include "steamvr/steam_manager.h"

#include <QCoreApplication>

namespace {

constexpr int pauseAfterStop = 500;    // ms
constexpr int startAgainDelay = 10000; // ms

} // namespace

StreamingSettings::StreamingSettings(Clock &clock, ConfigManager &config, SteamManager &steam,
                                     QMutex &switchLock, QObject *parent)
    : QObject(parent), clock_(clock), config_(config), steam_(steam), switchLock_(switchLock)
{
}

StreamingSettings::Values StreamingSettings::current() const
{
    return {config_.definitionIndex(), config_.fpsIndex(),  config_.encodeIndex(), config_.audio(),
            config_.tenBit(),          config_.fullRange(), config_.hdr()};
}

int StreamingSettings::bitRate(bool wired) const
{
    return config_.loadDeviceSettings(false, 0)
        .value(wired ? QLatin1String("bitRate_wired") : QLatin1String("bitRate"))
        .toString()
        .toInt();
}

int StreamingSettings::scale() const
{
    return config_.loadDeviceSettings(false, 0).value(QLatin1String("scale")).toString().toInt();
}

void StreamingSettings::apply(const Values &values, bool wired)
{
    config_.applyStreamingSettings(values.definition, values.fps, values.encoder, values.audio,
                                   wired, values.tenBit, values.fullRange, values.hdr);
}

void StreamingSettings::restartAround(const std::function<void()> &write)
{
    const QMutexLocker lock(&switchLock_);
    steam_.stopSteamVR();
    clock_.sleep(pauseAfterStop);
    write();
    clock_.singleShot(startAgainDelay, this, [this] { steam_.startSteamVR(); });
}

void StreamingSettings::setEffects(const Values &values, bool wired, const QString &currentSerial)
{
    emit toast(QCoreApplication::translate("ORBManager", "steamVR重启设置中，请勿操作"), 15000);
    restartAround([&] {
        config_.saveDeviceSettings(currentSerial);
        apply(values, wired);
    });
}

void StreamingSettings::setCustom(int scale, int bitRate, bool wired, const QString &currentSerial)
{
    // Not saved: it goes to the file with the restart that follows.
    config_.setCustomize(scale, bitRate, wired, ConfigManager::modelOf(currentSerial));
}

void StreamingSettings::setBitRate(int bitRate, bool wired, const QString &currentSerial)
{
    config_.setBitRate(bitRate, wired, ConfigManager::modelOf(currentSerial));
    config_.saveDeviceSettings(currentSerial);
}
