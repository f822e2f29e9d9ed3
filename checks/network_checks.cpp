#include "checks/table.h"

#include <QCoreApplication>

using namespace std::chrono_literals;

namespace checks {

namespace {

Found networkIsPublic(const Facts &facts)
{
    if (facts.wired != false || !facts.networkCategory ||
        !facts.networkCategory->contains(QLatin1String("Public")))
        return std::nullopt;
    return std::vector<Evidence>();
}

Found portsAreTaken(const Facts &facts)
{
    if (!facts.portHolders || facts.portHolders->isEmpty())
        return std::nullopt;
    return std::vector<Evidence>{{QT_TRANSLATE_NOOP("Checks", "占用端口的程序"),
                                  facts.portHolders->join(QStringLiteral(", "))}};
}

// Asked on while the connection hangs, so that it shows when the other one is gone.
Question::Answer askForHolder(const Facts &)
{
    const std::optional<ControlPort::Holder> holder = control_port::lookForHolder();
    return [holder](Facts &facts) {
        if (facts.controlPort)
            facts.controlPort->holder = holder;
    };
}

const Question controlPort = {Question::WhileHanging, 10s, askForHolder};

Found controlPortIsTaken(const Facts &facts)
{
    // Both may listen, and the server may have come to us.
    if (!facts.controlPort || !facts.controlPort->holder || facts.has(Stage::Server))
        return std::nullopt;
    return std::vector<Evidence>{
        {QT_TRANSLATE_NOOP("Checks", "占用端口的程序"), facts.controlPort->holder->name}};
}

Found controlPortIsUnusable(const Facts &facts)
{
    if (!facts.controlPort || facts.controlPort->listening)
        return std::nullopt;
    return std::vector<Evidence>{
        {QT_TRANSLATE_NOOP("Checks", "错误代码："), QString::number(facts.controlPort->error)}};
}

Check controlPortTaken()
{
    Check check;
    check.id = "control-port-taken";
    check.severity = Severity::Error;
    check.blocks = Stage::Server;
    check.title = QT_TRANSLATE_NOOP("Checks", "其他程序占用了串流所需的端口");
    check.text = QT_TRANSLATE_NOOP(
        "Checks",
        "%1正在使用端口9932，串流服务器可能连接不到本程序。请关闭它，然后重新启动本程序。");
    check.question = &controlPort;
    check.find = controlPortIsTaken;
    return check;
}

Check controlPortUnusable()
{
    Check check;
    check.id = "control-port-unusable";
    check.severity = Severity::Error;
    check.blocks = Stage::Server;
    check.causes = {"control-port-taken", "no-threads"};
    check.title = QT_TRANSLATE_NOOP("Checks", "无法使用端口9932");
    check.text = QT_TRANSLATE_NOOP("Checks", "Windows不允许本程序使用端口9932（错误%1），串流服务器"
                                             "连接不到本程序。请重新启动电脑后再试。");
    check.find = controlPortIsUnusable;
    return check;
}

Check publicNetwork()
{
    Check check;
    check.id = "public-network";
    check.blocks = Stage::Headset;
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "当前网络为公用网络");
    check.text = QT_TRANSLATE_NOOP(
        "Checks",
        "在公用网络上，Windows会对其他设备隐藏这台电脑，眼镜可能找不到它。请打开网络设置，"
        "把当前网络的类型改为“专用”。");
    check.action = {Action::OpenUrl, QT_TRANSLATE_NOOP("Checks", "打开网络设置"),
                    "ms-settings:network"};
    check.find = networkIsPublic;
    return check;
}

Check portsTaken()
{
    Check check;
    check.id = "ports-taken";
    check.severity = Severity::Error;
    check.blocks = Stage::Server;
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "以下程序占用了串流所需的端口");
    check.text = QT_TRANSLATE_NOOP("Checks", "请关闭这些程序，然后重新检测。");
    check.action = {Action::CheckAgain, QT_TRANSLATE_NOOP("Checks", "重新检测")};
    check.find = portsAreTaken;
    return check;
}

} // namespace

Table networkChecks()
{
    return {controlPortTaken(), controlPortUnusable(), portsTaken(), publicNetwork()};
}

} // namespace checks
