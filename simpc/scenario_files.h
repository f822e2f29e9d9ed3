// The files that a scenario wants to be there before the program starts.
#pragma once

#include "simpc/scenario.h"

namespace scenario {

// Writes the scenario's files below `home` and `work`, folders included, over
// whatever is there; files that the scenario wants not to be there are removed,
// others are left alone. On failure says why in `error` and gives false; some
// files may be written then.
bool layOutFiles(const Scenario &scenario, const QString &home, const QString &work,
                 QString *error);

} // namespace scenario
