#include "checks/table.h"

#include <QCoreApplication>

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
    return {portsTaken(), publicNetwork()};
}

} // namespace checks
