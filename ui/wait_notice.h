// Telling the user of a wait in a window of a process of its own.
//
// The thread that waits is the one that draws this program's windows: none of them
// could show anything, or be clicked. So the program is started once more, to show
// nothing but the wait, and ends with the choice as its exit code. It also ends with
// the process that started it, whatever ends that.
#pragma once

#include "base/long_wait.h"

#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace wait_notice {

// What the other process has to say.
struct Request
{
    long_wait::Subject subject;
    std::chrono::milliseconds lasted{0};
};

// The command line of that process, and what a command line asks for: nothing
// unless it is that of a notice.
QStringList arguments(const Request &request);
std::optional<Request> request(const QStringList &arguments);

// The exit codes, which the page knows as well.
constexpr int exitKeepWaiting = 0;
constexpr int exitEndPrograms = 10;
constexpr int exitGoOn = 11;

// Starts `program` with these arguments for each wait. Needs no event loop; on the
// thread that waits.
long_wait::Tell byProcess(const QString &program);

} // namespace wait_notice
