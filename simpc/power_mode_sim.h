// The power mode of processes on the simulated PC.
#pragma once

#include "pc/power_mode.h"

namespace power_mode::sim {

// Whether this process has asked for the efficient mode and not taken it back.
bool isEfficient();

} // namespace power_mode::sim
