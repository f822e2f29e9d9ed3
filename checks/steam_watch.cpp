#include "checks/steam_watch.h"

#include "pc/processes.h"
#include "steamvr/steam_manager.h"

SteamWatch::SteamWatch(SteamManager &steam, QObject *parent) : QObject(parent), steam_(steam) {}

bool SteamWatch::steamInstalled() const
{
    return steam_.steamInstalled();
}

void SteamWatch::checkInstalled()
{
    const State state = steamInstalled() ? Pass : NoneSteam;
    if (state != state_)
        setState(state);
}

void SteamWatch::check()
{
    const std::vector<processes::Entry> running = processes::list();
    setSteamRunning(steam_.hasLaunchSteam(running));
    setSteamVRRunning(steam_.hasLaunchSteamVR(running));
}

void SteamWatch::checkSteam()
{
    setSteamRunning(steam_.hasLaunchSteam());
}

void SteamWatch::checkSteamVR()
{
    setSteamVRRunning(steam_.hasLaunchSteamVR());
}

void SteamWatch::setSteamRunning(bool running)
{
    if (running == steamRunning_)
        return;
    steamRunning_ = running;
    emit steamRunningChanged();
    // One that nobody installed is there while it runs.
    if (!steamInstalled())
        setState(running ? Pass : NoneSteam);
}

void SteamWatch::setSteamVRRunning(bool running)
{
    if (running == steamVRRunning_)
        return;
    steamVRRunning_ = running;
    emit steamVRRunningChanged();
}

void SteamWatch::steamLaunched()
{
    emit steamRunningChanged();
}

void SteamWatch::steamVRLaunched()
{
    steamVRRunning_ = true;
    emit steamVRRunningChanged();
}

std::optional<LaunchFailure> SteamWatch::steamFailure() const
{
    return steam_.steamFailure();
}

std::optional<LaunchFailure> SteamWatch::steamVRStopFailure() const
{
    return steam_.stopFailure();
}

void SteamWatch::setState(State state)
{
    state_ = state;
    emit stateChanged();
}
