#include "checks/pc_check.h"
#include "checks/table.h"
#include "config/hardware_rules.h"
#include "pc/display_drivers.h"
#include "pc/os_version.h"
#include "sysinfo/driver_rules.h"

#include <QCoreApplication>

using namespace std::chrono_literals;

namespace checks {

namespace {

// A PC does not change under the program, but for a driver that is installed.
constexpr auto lookAgainAfter = 60s;

// The page's own look at these has to log and report what it finds, and is made on
// the GUI thread; these leave no trace.
Question::Answer askForHardware(const Facts &known)
{
    const QString version = os_version::product();
    const int score = hardware_rules::scoreSilently(known.cpuName, known.gpuName);
    return [=](Facts &facts) {
        facts.systemVersion = version;
        facts.hardwareScore = score;
    };
}

Question::Answer askForDrivers(const Facts &)
{
    const QStringList versions = driver_rules::nvidiaVersionsOf(display_drivers::list());
    return [=](Facts &facts) { facts.nvidiaDrivers = versions; };
}

const Question hardware = {Question::AtStart, lookAgainAfter, askForHardware};
const Question drivers = {Question::AtStart, lookAgainAfter, askForDrivers};

Found systemIsTooOld(const Facts &facts)
{
    if (!facts.systemVersion || PcCheck::isNewEnough(*facts.systemVersion))
        return std::nullopt;
    return std::vector<Evidence>{{QT_TRANSLATE_NOOP("Checks", "操作系统："), *facts.systemVersion}};
}

Found hardwareIsTooWeak(const Facts &facts)
{
    if (!facts.hardwareScore || PcCheck::isEnough(*facts.hardwareScore))
        return std::nullopt;
    return std::vector<Evidence>{{QT_TRANSLATE_NOOP("Checks", "处理器："), facts.cpuName},
                                 {QT_TRANSLATE_NOOP("Checks", "显卡："), facts.gpuName}};
}

Found driverIsTooOld(const Facts &facts)
{
    if (!facts.nvidiaDrivers || !driver_rules::needUpdate(*facts.nvidiaDrivers))
        return std::nullopt;
    return std::vector<Evidence>{{QT_TRANSLATE_NOOP("Checks", "驱动版本："),
                                  facts.nvidiaDrivers->join(QStringLiteral(", "))}};
}

Found threadsAreMissing(const Facts &facts)
{
    if (facts.missingThreads.isEmpty())
        return std::nullopt;
    return std::vector<Evidence>{{QT_TRANSLATE_NOOP("Checks", "缺少线程的功能："),
                                  facts.missingThreads.join(QStringLiteral(", "))}};
}

Check noThreads()
{
    Check check;
    check.id = "no-threads";
    check.severity = Severity::Error;
    check.title = QT_TRANSLATE_NOOP("Checks", "电脑的资源已用尽");
    check.text = QT_TRANSLATE_NOOP("Checks", "Windows无法再为本程序创建线程，部分功能无法工作。"
                                             "请关闭其他程序，然后重新启动本程序。");
    check.find = threadsAreMissing;
    return check;
}

Check systemTooOld()
{
    Check check;
    check.id = "system-too-old";
    check.severity = Severity::Error;
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "本机配置无法串流");
    check.text = QT_TRANSLATE_NOOP("Checks", "请升级到Windows 10或更高版本。");
    check.action = {Action::OpenPage, QT_TRANSLATE_NOOP("Checks", "查看更多配置"),
                    "SystemInfoPage"};
    check.question = &hardware;
    check.find = systemIsTooOld;
    return check;
}

Check hardwareTooWeak()
{
    Check check;
    check.id = "hardware-too-weak";
    check.severity = Severity::Error;
    check.causes = {"system-too-old"};
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "本机配置无法串流");
    check.text = QT_TRANSLATE_NOOP("Checks", "处理器或显卡低于最低配置。");
    check.action = {Action::OpenPage, QT_TRANSLATE_NOOP("Checks", "查看更多配置"),
                    "SystemInfoPage"};
    check.question = &hardware;
    check.find = hardwareIsTooWeak;
    return check;
}

Check driverTooOld()
{
    Check check;
    check.id = "driver-too-old";
    check.causes = {"system-too-old", "hardware-too-weak"};
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "显卡驱动版本过低");
    check.text = QT_TRANSLATE_NOOP(
        "Checks", "旧版驱动可能导致画面卡顿或无法串流。请从显卡厂商的网站下载并安装最新驱动，"
                  "然后重新启动电脑。");
    check.action = {Action::OpenGuide, QT_TRANSLATE_NOOP("Checks", "使用帮助")};
    check.question = &drivers;
    check.find = driverIsTooOld;
    return check;
}

} // namespace

Table hardwareChecks()
{
    return {noThreads(), systemTooOld(), hardwareTooWeak(), driverTooOld()};
}

} // namespace checks
