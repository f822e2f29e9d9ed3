// The end of the user's session: log-off, shutdown, restart, or an installer that has
// to replace our files.
#pragma once

#include <QByteArray>

namespace session_end {

enum class Message {
    Other,
    Question,  // may the session end? Any program may still refuse
    Ends,      // it does: the process may be ended as soon as it has answered
    IsRefused, // it goes on after all
};

// Reads what the application's native event filter sees. The system tells each
// window, so everything comes several times.
Message read(const QByteArray &eventType, const void *message);

// The answer that lets the session end.
extern const long yes;

// Ends this process where it stands, with exit code 0: no destructor runs, nobody is
// waited for, and no program is started, which the system refuses by then.
[[noreturn]] void endProcess();

} // namespace session_end
