// What the controller looks at every five seconds.
#pragma once

#include "checks/power_tip.h"

#include <QObject>

#include <functional>

class ConnectionFlow;
class ConnectionRoad;
class Clock;
class Readiness;
class SystemInfo;

// GUI thread.
class Poll : public QObject
{
    Q_OBJECT

public:
    struct Parts
    {
        Clock &clock;
        Readiness &readiness;
        ConnectionFlow &flow;
        ConnectionRoad &road;
        SystemInfo &system;
        std::function<bool()> wired;
        std::function<void()> checkUsb; // lets adb look for headsets
    };

    explicit Poll(Parts parts, QObject *parent = nullptr);

    void run();

signals:
    void powerTip(bool show);
    void toast(const QString &text, int duration);
    // The Wi-Fi is a public network; at most once per run.
    void publicNetwork();

private:
    void look();
    void walkRoad();

    Parts parts_;
    PowerTip powerTip_;
    bool checkNetwork_ = true;
};
