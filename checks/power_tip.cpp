#include "checks/power_tip.h"

PowerTip::Change PowerTip::update(std::optional<power::AcLine> line)
{
    const bool onBattery = line != power::AcLine::Online;
    if (onBattery == shown_)
        return Change::None;
    shown_ = onBattery;
    return onBattery ? Change::Show : Change::Close;
}
