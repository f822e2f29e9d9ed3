// Whether Steam and SteamVR are there and run.
#pragma once

#include "steamvr/launch_failure.h"

#include <QObject>

#include <optional>

class SteamManager;

// As it was found last; before the first look nothing runs. GUI thread.
class SteamWatch : public QObject
{
    Q_OBJECT

public:
    // The values of ORBManager::SteamState.
    enum State { Pass = 0, NoneSteam = 1, NoneSteamVR = 2, SteamVRForbid = 3 };

    explicit SteamWatch(SteamManager &steam, QObject *parent = nullptr);

    // Ask the PC, and announce what changed.
    void checkInstalled();
    // Steam, then SteamVR, both as the PC was at one moment.
    void check();
    void checkSteam();
    void checkSteamVR();

    // Steam was asked for: announced as a change, though none was seen yet.
    void steamLaunched();
    // SteamVR was asked for and counts as running until the next look.
    void steamVRLaunched();

    State state() const { return state_; }
    bool steamInstalled() const;
    bool steamRunning() const { return steamRunning_; }
    bool steamVRRunning() const { return steamVRRunning_; }
    // What came of the last attempts to start Steam and to stop SteamVR.
    std::optional<LaunchFailure> steamFailure() const;
    std::optional<LaunchFailure> steamVRStopFailure() const;

signals:
    void stateChanged();
    void steamRunningChanged();
    void steamVRRunningChanged();

private:
    void setSteamRunning(bool running);
    void setSteamVRRunning(bool running);
    void setState(State state);

    SteamManager &steam_;
    State state_ = NoneSteam;
    bool steamRunning_ = false;
    bool steamVRRunning_ = false;
};
