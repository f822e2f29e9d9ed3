// Whether Steam and SteamVR are there and run, and bringing them up.
#pragma once

#include <QObject>
#include <QString>

class Clock;
class SteamManager;

// GUI thread; waiting for Steam blocks it for up to 27 s.
class Readiness : public QObject
{
    Q_OBJECT

public:
    // The values of ORBManager::SteamState.
    enum State { Pass = 0, NoneSteam = 1, NoneSteamVR = 2, SteamVRForbid = 3 };

    Readiness(Clock &clock, SteamManager &steam, const QString &applicationDir,
              QObject *parent = nullptr);

    // Starts Steam, or SteamVR when Steam runs already. Once per run.
    void startUp();
    // The looks that follow it by themselves: Steam's state after 1 s, the
    // advice about the install folder after 4 s.
    void planLooks();

    // Looks whether Steam, SteamVR run and announces what changed.
    void lookForSteam();
    void lookForSteamVR();

    // The user asks for Steam or SteamVR.
    void launch(bool steamVR);

    State state() const { return state_; }
    bool steamRunning() const { return steamRunning_; }
    bool steamVRRunning() const { return steamVRRunning_; }

signals:
    void stateChanged();
    void steamRunningChanged();
    void steamVRRunningChanged();
    void toast(const QString &text, int duration);

private:
    void waitForSteam();
    void setState(State state);

    Clock &clock_;
    SteamManager &steam_;
    QString applicationDir_;
    State state_ = NoneSteam;
    bool steamRunning_ = false;
    bool steamVRRunning_ = false;
};
