// USB or Wi-Fi: the choice and its switch.
#pragma once

#include <QObject>

#include <functional>

class Clock;
class ConfigManager;
class StreamingSettings;

// GUI thread; a switch blocks it while SteamVR stops.
class LinkMode : public QObject
{
    Q_OBJECT

public:
    // What happens around a switch.
    struct Actions
    {
        std::function<void()> hookAdb;       // once, before the first wired mode
        std::function<void()> startUp;       // once, on the first switch of a run
        std::function<void()> enterWired;    // the mode became wired
        std::function<void()> enterWireless; // the mode became wireless
    };

    LinkMode(Clock &clock, ConfigManager &config, StreamingSettings &settings, Actions actions,
             QObject *parent = nullptr);

    bool wired() const { return wired_; }

    // Refused, with a toast, within 4 s of the switch before.
    void choose(bool wired);

signals:
    void wiredChanged();
    void toast(const QString &text, int duration);

private:
    Clock &clock_;
    ConfigManager &config_;
    StreamingSettings &settings_;
    Actions actions_;
    bool wired_ = false;
    bool switching_ = false;
    bool adbHooked_ = false;
    bool startedUp_ = false;
};
