#include "pc/power.h"

#include "simpc/sim_pc.h"

namespace power {

std::optional<AcLine> acLine()
{
    const std::optional<int> status = SimPc::current().acLine();
    if (!status)
        return std::nullopt;
    return static_cast<AcLine>(*status);
}

} // namespace power
