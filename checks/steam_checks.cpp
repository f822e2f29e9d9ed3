#include "checks/table.h"

#include <QCoreApplication>
#include <QDir>

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

const char *const fileLabel = QT_TRANSLATE_NOOP("Checks", "文件：");
const char *const reasonLabel = QT_TRANSLATE_NOOP("Checks", "原因：");

enum class FileIs { Missing, There };

Found launchFailed(const std::optional<LaunchFailure> &failure, FileIs file)
{
    if (!failure || failure->isMissing() != (file == FileIs::Missing))
        return std::nullopt;
    return std::vector<Evidence>{{fileLabel, QDir::toNativeSeparators(failure->file)},
                                 {reasonLabel, failure->reason}};
}

// What the user started by hand runs all the same.
Found steamFileIsMissing(const Facts &facts)
{
    return facts.steamRunning == false ? launchFailed(facts.steamFailure, FileIs::Missing)
                                       : std::nullopt;
}

Found steamDoesNotStart(const Facts &facts)
{
    return facts.steamRunning == false ? launchFailed(facts.steamFailure, FileIs::There)
                                       : std::nullopt;
}

Found steamVRStopFileIsMissing(const Facts &facts)
{
    return launchFailed(facts.steamVRStopFailure, FileIs::Missing);
}

Found steamVRDoesNotStop(const Facts &facts)
{
    return launchFailed(facts.steamVRStopFailure, FileIs::There);
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

Check steamFileMissing()
{
    Check check;
    check.id = "steam-file-missing";
    check.severity = Severity::Error;
    check.blocks = Stage::Steam;
    check.causes = {"steam-missing"};
    check.title = QT_TRANSLATE_NOOP("Checks", "无法启动Steam");
    check.text = QT_TRANSLATE_NOOP(
        "Checks", "找不到%1。Steam可能已被移动或卸载：请重新安装Steam，或手动启动它。");
    check.action = {Action::InstallSteam, QT_TRANSLATE_NOOP("Checks", "安装")};
    check.find = steamFileIsMissing;
    return check;
}

Check steamNotStartable()
{
    Check check;
    check.id = "steam-not-startable";
    check.severity = Severity::Error;
    check.blocks = Stage::Steam;
    check.causes = {"steam-missing"};
    check.title = QT_TRANSLATE_NOOP("Checks", "无法启动Steam");
    check.text = QT_TRANSLATE_NOOP(
        "Checks",
        "Windows无法启动%1：%2请再试一次，或手动启动Steam；如果仍然失败，请重新安装Steam。");
    check.action = {Action::LaunchSteam, QT_TRANSLATE_NOOP("Checks", "启动")};
    check.find = steamDoesNotStart;
    return check;
}

Check steamVRStopFileMissing()
{
    Check check;
    check.id = "steamvr-stop-file-missing";
    check.title = QT_TRANSLATE_NOOP("Checks", "无法关闭SteamVR");
    check.text =
        QT_TRANSLATE_NOOP("Checks", "找不到%1。切换连接方式或更改设置之前，请手动关闭SteamVR，"
                                    "并在Steam中验证SteamVR文件的完整性。");
    check.find = steamVRStopFileIsMissing;
    return check;
}

Check steamVRNotStoppable()
{
    Check check;
    check.id = "steamvr-not-stoppable";
    check.title = QT_TRANSLATE_NOOP("Checks", "无法关闭SteamVR");
    check.text =
        QT_TRANSLATE_NOOP("Checks", "Windows无法启动%1：%2切换连接方式或更改设置之前，请手动关闭"
                                    "SteamVR，并在Steam中验证SteamVR文件的完整性。");
    check.find = steamVRDoesNotStop;
    return check;
}

Check steamStopped()
{
    Check check;
    check.id = "steam-stopped";
    check.severity = Severity::Error;
    check.blocks = Stage::Steam;
    check.causes = {"steam-missing", "steam-file-missing", "steam-not-startable"};
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
    return {steamMissing(),   steamFileMissing(),       steamNotStartable(),  steamStopped(),
            steamVRStopped(), steamVRStopFileMissing(), steamVRNotStoppable()};
}

} // namespace checks
