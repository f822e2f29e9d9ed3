// The keys of a scenario that say what hardware and system the PC has.
#pragma once

class ObjectReader;
struct Scenario;

namespace scenario {

// Reads them from the object `pc` of a scenario file.
void readHardware(ObjectReader &pc, Scenario *scenario);

} // namespace scenario
