// USB or Wi-Fi: the choice and its switch.
#pragma once

#include "config/link_kind.h"
#include "config/settings_choice.h"

#include <QObject>

#include <functional>

class Clock;
class ConfigManager;
class ConnectionFlow;
class StreamingSettings;
class UsbHeadset;

// GUI thread; a switch blocks it while SteamVR stops.
class LinkMode : public QObject
{
    Q_OBJECT

public:
    // Everything outlives the object. No two members have one type, so none
    // can take another's place.
    struct Dependencies
    {
        Clock &clock;
        ConfigManager &config;
        StreamingSettings &settings;
        ConnectionFlow &flow;
        UsbHeadset &usb;
        // Begins the work of this run with the link that was chosen first.
        std::function<void(const SettingsChoice &, LinkKind)> startRun;
    };

    explicit LinkMode(Dependencies dependencies, QObject *parent = nullptr);

    // NotChosen until the first choice of this run has begun to work.
    LinkKind kind() const { return kind_; }

    // Refused, with a toast, within 4 s of the switch before. The first choice
    // starts the run; a change restarts SteamVR.
    void choose(LinkKind kind);

signals:
    // Wired became wireless or the other way round; before any choice the link
    // counts as wireless.
    void wiredChanged();
    void toast(const QString &text, int duration);

private:
    void restartSteamVR(const SettingsChoice &choice, LinkKind kind);
    void enter(LinkKind kind);

    Dependencies deps_;
    LinkKind kind_ = LinkKind::NotChosen;
    bool started_ = false;
    bool switching_ = false;
};
