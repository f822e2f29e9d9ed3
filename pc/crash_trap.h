// What is left of this process when it breaks.
#pragma once

#include <QString>

namespace crash_trap {

// Files that are written when the process breaks, and not before.
struct Places
{
    QString record; // a small text: why, stack addresses, modules, last lines of the log
    QString dump;   // what a debugger reads; only where the system can write it
};

// From now on an unhandled exception, a fatal signal, std::terminate() and abort() leave
// a record; `program` is its second line, after what happened. Whoever was told of such
// things before still is, the system included, and the process ends as it would have.
// Nothing else is done in a process that is broken.
//
// Once a process, on the GUI thread.
void set(const Places &places, const QString &program);

// Leaves the record of a break that the process itself has noticed and that will end
// it at once; `why` begins its first line. Any thread; nothing before set().
void report(const char *why);

} // namespace crash_trap
