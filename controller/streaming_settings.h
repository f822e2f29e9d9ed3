// The streaming settings of the current headset, read and changed.
#pragma once

#include <QMutex>
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
    struct Values
    {
        int definition = 0;
        int fps = 0;
        int encoder = 0;
        bool audio = false;
        bool tenBit = false;
        bool fullRange = false;
        bool hdr = false;
    };

    // `switchLock` is held while SteamVR is stopped and the files are written.
    StreamingSettings(Clock &clock, ConfigManager &config, SteamManager &steam, QMutex &switchLock,
                      QObject *parent = nullptr);

    Values current() const;
    int bitRate(bool wired) const; // Mbit/s
    int scale() const;             // percent

    // Writes the values for the given link, without a restart.
    void apply(const Values &values, bool wired);
    // Stops SteamVR, runs `write`, and starts SteamVR again 10 s later.
    void restartAround(const std::function<void()> &write);

    void setEffects(const Values &values, bool wired, const QString &currentSerial);
    void setCustom(int scale, int bitRate, bool wired, const QString &currentSerial);
    void setBitRate(int bitRate, bool wired, const QString &currentSerial);

signals:
    void toast(const QString &text, int duration);

private:
    Clock &clock_;
    ConfigManager &config_;
    SteamManager &steam_;
    QMutex &switchLock_;
};
