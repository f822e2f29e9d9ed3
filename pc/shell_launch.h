// Starting programs the way the desktop does.
#pragma once

#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>

namespace shell_launch {

struct Outcome
{
    enum Wait {
        NoHandle, // the system gave no process to wait for
        Ended,
        TimedOut,
        GivenUp, // by who waited
        WaitFailed
    };
    bool started = false;
    unsigned startError = 0; // the system's error number when not started
    QString startErrorText;  // its words for it, in its language; may be empty
    Wait wait = NoHandle;
    unsigned waitError = 0;               // the system's error number for WaitFailed
    std::chrono::milliseconds elapsed{0}; // from the call until it returned
};

// Whether one of the system's error numbers says that there is no such file, or no
// such folder. Pure.
constexpr bool isNoSuchFile(unsigned error)
{
    constexpr unsigned fileNotFound = 2;
    constexpr unsigned pathNotFound = 3;
    return error == fileNotFound || error == pathNotFound;
}

// The system's number for "no more threads can be made".
constexpr unsigned noThreadError = 164;

// Opens `program` with `parameters`, its window hidden, and waits until it has
// ended, `limit` at most, and as long as `goesOn`, asked each quarter of a second,
// says; a program that runs on is left running. What goes
// wrong is returned, not shown to the user. Blocks the calling thread, which
// handles no message or event meanwhile; any thread. Without a thread to do it on
// nothing is opened, which is an error of the start as well.
Outcome openHiddenAndWait(const QString &program, const QString &parameters,
                          std::chrono::milliseconds limit,
                          const std::function<bool()> &goesOn = {});

// Starts a program that lives on by itself; false when it could not be
// started. Does not wait; any thread.
bool startDetached(const QString &program, const QStringList &arguments);

} // namespace shell_launch
