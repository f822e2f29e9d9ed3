#include "checks/table.h"

#include <QCoreApplication>

using namespace std::chrono_literals;

namespace checks {

namespace {

// Steam is started with the program and is given this long to come.
constexpr auto steamComesWithin = 30s;

Found steamIsMissing(const Facts &facts)
{
    if (facts.steamInstalled != false || facts.steamRunning != false)
        return std::nullopt;
    return std::vector<Evidence>();
}

Found steamIsStopped(const Facts &facts)
{
    if (facts.steamRunning != false)
        return std::nullopt;
    return std::vector<Evidence>();
}

Found steamVRIsStopped(const Facts &facts)
{
    if (facts.steamVRRunning != false)
        return std::nullopt;
    return std::vector<Evidence>();
}

Check steamMissing()
{
    Check check;
    check.id = "steam-missing";
    check.severity = Severity::Error;
    check.blocks = Stage::Steam;
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "安装Steam软件");
    check.text = QT_TRANSLATE_NOOP("Checks", "请按以下步骤操作");
    check.action = {Action::InstallSteam, QT_TRANSLATE_NOOP("Checks", "安装")};
    check.find = steamIsMissing;
    return check;
}

Check steamStopped()
{
    Check check;
    check.id = "steam-stopped";
    check.severity = Severity::Error;
    check.blocks = Stage::Steam;
    check.causes = {"steam-missing"};
    check.hold = steamComesWithin;
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "Steam软件");
    check.text = QT_TRANSLATE_NOOP("Checks", "请按以下步骤操作");
    check.action = {Action::LaunchSteam, QT_TRANSLATE_NOOP("Checks", "启动")};
    check.find = steamIsStopped;
    return check;
}

Check steamVRStopped()
{
    Check check;
    check.id = "steamvr-stopped";
    check.severity = Severity::Error;
    check.blocks = Stage::SteamVR;
    check.causes = {"steam-missing", "steam-stopped"};
    check.hold = steamComesWithin;
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "Steam VR软件");
    check.text = QT_TRANSLATE_NOOP("Checks", "请按以下步骤操作");
    check.action = {Action::LaunchSteamVR, QT_TRANSLATE_NOOP("Checks", "启动")};
    check.find = steamVRIsStopped;
    return check;
}

} // namespace

Table steamChecks()
{
    return {steamMissing(), steamStopped(), steamVRStopped()};
}

} // namespace checks
