// The keys of a scenario that say how the PC is, and how it changes.
#pragma once

#include "simpc/key_table.h"

#include <QString>

#include <functional>
#include <vector>

class SimPc;

// Something that becomes of the PC. `tell` hears the events.
using PcChange = std::function<void(SimPc &pc, const std::function<void(const QString &)> &tell)>;
using PcChanges = std::vector<PcChange>;

namespace scenario {

// What the object `pc` says, in the order in which it is to be done.
PcChanges readBeginning(ObjectReader pc);
// What one moment says apart from its time. done() is the caller's.
PcChanges readMoment(ObjectReader &moment);

// Every key of the two, for people.
KeyRows pcKeys();
// Those of a moment that `pc` does not have.
KeyRows momentKeys();

} // namespace scenario
