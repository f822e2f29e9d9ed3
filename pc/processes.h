// The processes that run on this PC. Synchronous; any thread.
#pragma once

#include <QString>

#include <functional>
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
// out, a minute at most; `goesOn` is asked each quarter of a second whether to.
void terminate(quint32 pid, const std::function<bool()> &goesOn = {});

} // namespace processes
