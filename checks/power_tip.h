// When to tell the user that the PC runs on battery.
#pragma once

#include "pc/power.h"

class PowerTip
{
public:
    enum class Change { None, Show, Close };

    // Only a mains line that answers counts as mains; everything else is taken
    // for battery.
    Change update(std::optional<power::AcLine> line);

private:
    bool shown_ = false;
};
