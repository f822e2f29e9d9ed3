// What the controller looks at every five seconds.
#pragma once

#include "checks/power_tip.h"
#include "config/link_kind.h"

#include <QObject>

class CheckRunner;
class ConnectionFlow;
class ConnectionTracker;
class SteamWatch;
class SystemInfo;
class UsbHeadset;

// GUI thread.
class Poll : public QObject
{
    Q_OBJECT

public:
    // Everything outlives the object.
    struct Dependencies
    {
        SteamWatch &steam;
        ConnectionFlow &flow;
        SystemInfo &system;
        UsbHeadset &usb;
        ConnectionTracker &tracker;
        CheckRunner &checks; // learns what the poll learns
    };

    explicit Poll(const Dependencies &dependencies, QObject *parent = nullptr);

    // `kind` is the link of the moment.
    void run(LinkKind kind);

signals:
    void powerTip(bool show);
    void toast(const QString &text, int duration);
    // The Wi-Fi is a public network; at most once per run.
    void publicNetwork();

private:
    void takeSteps(LinkKind kind);

    Dependencies deps_;
    PowerTip powerTip_;
    bool checkNetwork_ = true;
};
