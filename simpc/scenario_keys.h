// The keys of a whole scenario file, and the tables of all keys for people.
#pragma once

#include "simpc/scenario.h"

#include <vector>

namespace scenario {

struct ScenarioKey
{
    KeyRow row;
    void (*read)(ObjectReader &root, const JsonDocument &whole, Scenario *scenario);
};

// In the order in which they are read.
const std::vector<ScenarioKey> &scenarioKeys();

} // namespace scenario
