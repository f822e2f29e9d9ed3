// The processes that run on this PC. Synchronous; any thread.
#pragma once

#include <QString>

#include <vector>

namespace processes {

struct Entry
{
    quint32 pid = 0;
    QString name; // executable name without folder, for example "steam.exe"
};

// A snapshot, in the system's order. Empty when none can be taken.
std::vector<Entry> list();

// The full path of the executable of a process; empty when it cannot be asked
// (no such process, no right to).
QString modulePath(quint32 pid);

// Ends a process at once, without asking it. Waits until the order was carried
// out, 30 seconds at most.
void terminate(quint32 pid);

} // namespace processes
