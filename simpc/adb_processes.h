// adb on the simulated PC: real processes of this machine.
#pragma once

#include "simpc/sim_processes.h"

#include <QString>

namespace adb_processes {

// Those whose program is called adb or adb.exe and whose environment says
// ANDROID_ADB_SERVER_PORT=`port`. The simulated PC knows them as "adb.exe", by
// pids of its own. Others of this machine stay out of its sight and reach.
SimProcesses::HostProcesses onPort(quint16 port);

// A port of 127.0.0.1 that nobody uses; 0 when there is none.
quint16 freePort();

} // namespace adb_processes
