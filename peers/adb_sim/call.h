// One call of adb: asks the server, which it starts when there is none.
#pragma once

#include "peers/adb_sim/state.h"

#include <QStringList>

// Prints what adb prints and returns its exit code.
int runCall(const State &state, const QStringList &arguments, quint16 port);
