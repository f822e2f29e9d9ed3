#include "simpc/power_mode_sim.h"

#include <atomic>

namespace {

std::atomic<bool> wish{false};

} // namespace

bool power_mode::setEfficient(bool efficient)
{
    wish = efficient;
    return true;
}

bool power_mode::sim::isEfficient()
{
    return wish;
}
