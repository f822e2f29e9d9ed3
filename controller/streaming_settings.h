// The streaming settings of the current headset, read and changed.
#pragma once

#include "base/mutex.h"
#include "config/link_kind.h"
#include "config/settings_choice.h"

#include <QObject>

#include <functional>

class Clock;
class ConfigManager;
class SteamManager;

// GUI thread. Changes that the streaming server reads only at its start
// restart SteamVR, which blocks the thread until SteamVR has stopped.
class StreamingSettings : public QObject
{
    Q_OBJECT

public:
    // `switchLock` is held while SteamVR is stopped and the files are written.
    StreamingSettings(Clock &clock, ConfigManager &config, SteamManager &steam, Mutex &switchLock,
                      QObject *parent = nullptr);

    SettingsChoice current() const;
    int bitRate(LinkKind link) const; // Mbit/s
    int scale() const;                // percent

    // Writes the choice for the given link, without a restart.
    void apply(const SettingsChoice &choice, LinkKind link);
    // Stops SteamVR, runs `write`, and starts SteamVR again 10 s later.
    void restartAround(const std::function<void()> &write);

    // The changes that the pages make. `serial` is the known headset's, whose
    // model they are for.
    void setEffects(const SettingsChoice &choice, LinkKind link, const QString &serial);
    void setCustom(int scale, int bitRate, LinkKind link, const QString &serial);
    void setBitRate(int bitRate, LinkKind link, const QString &serial);

signals:
    void toast(const QString &text, int duration);

private:
    Clock &clock_;
    ConfigManager &config_;
    SteamManager &steam_;
    Mutex &switchLock_;
};
