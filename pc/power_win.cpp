#include "pc/power.h"

#include <windows.h>

namespace power {

std::optional<AcLine> acLine()
{
    SYSTEM_POWER_STATUS status = {};
    if (!GetSystemPowerStatus(&status))
        return std::nullopt;
    return static_cast<AcLine>(status.ACLineStatus);
}

} // namespace power
