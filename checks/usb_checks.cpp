#include "checks/table.h"

#include <QCoreApplication>

namespace checks {

namespace {

Found cableIsEmpty(const Facts &facts)
{
    // Before its first answer adb reports neither a headset nor that there is
    // none.
    if (facts.wired != true || !facts.adb || !facts.adb->serial.isEmpty())
        return std::nullopt;
    return std::vector<Evidence>();
}

Check noHeadsetOnCable()
{
    Check check;
    check.id = "no-headset-on-cable";
    check.severity = Severity::Error;
    check.blocks = Stage::Headset;
    check.surface = Surface::Own;
    check.title = QT_TRANSLATE_NOOP("Checks", "数据线上没有检测到VR眼镜");
    check.text = QT_TRANSLATE_NOOP("Checks", "重新插拔数据线，或更换接口后再试");
    check.find = cableIsEmpty;
    return check;
}

} // namespace

Table usbChecks()
{
    return {noHeadsetOnCable()};
}

} // namespace checks
