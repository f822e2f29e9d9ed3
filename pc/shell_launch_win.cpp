#include "pc/shell_launch.h"

#include "pc/handles_win.h"
#include "pc/shell_thread_win.h"
#include "pc/system_programs.h"

#include <QElapsedTimer>
#include <QProcess>

#include <algorithm>

#include <shellapi.h>

namespace shell_launch {

namespace {

using GoesOn = std::function<bool()>;
using namespace std::chrono_literals;

constexpr std::chrono::milliseconds turn = 250ms;

void waitFor(HANDLE process, std::chrono::milliseconds limit, const GoesOn &goesOn,
             Outcome *outcome)
{
    QElapsedTimer timer;
    timer.start();
    DWORD state = WAIT_TIMEOUT;
    for (auto left = limit; state == WAIT_TIMEOUT && left > 0ms;
         left = limit - std::chrono::milliseconds(timer.elapsed())) {
        state = WaitForSingleObject(process, static_cast<DWORD>(std::min(turn, left).count()));
        if (state == WAIT_TIMEOUT && goesOn && !goesOn()) {
            outcome->wait = Outcome::GivenUp;
            return;
        }
    }
    switch (state) {
    case WAIT_OBJECT_0:
        outcome->wait = Outcome::Ended;
        break;
    case WAIT_TIMEOUT:
        outcome->wait = Outcome::TimedOut;
        break;
    default:
        outcome->wait = Outcome::WaitFailed;
        outcome->waitError = GetLastError();
        break;
    }
}

// The system's words are those of the moment.
void noteStartError(unsigned error, Outcome *outcome)
{
    outcome->startError = error;
    outcome->startErrorText = qt_error_string(static_cast<int>(error)).trimmed();
}

Outcome open(const QString &program, const QString &parameters, std::chrono::milliseconds limit,
             const GoesOn &goesOn)
{
    const QByteArray file = program.toLocal8Bit();
    const QByteArray arguments = parameters.toLocal8Bit();
    SHELLEXECUTEINFOA request = {};
    request.cbSize = sizeof request;
    // What goes wrong is for us to tell: the shell's own message would stand
    // before the user for as long as nobody answers it, and so would the launch.
    request.fMask = SEE_MASK_NOCLOSEPROCESS | SEE_MASK_FLAG_NO_UI;
    request.lpVerb = "open";
    request.lpFile = file.constData();
    request.lpParameters = arguments.constData();
    request.nShow = SW_HIDE;

    Outcome outcome;
    outcome.started = ShellExecuteExA(&request) != FALSE;
    if (!outcome.started) {
        noteStartError(GetLastError(), &outcome);
    } else if (request.hProcess) {
        const KernelHandle process(request.hProcess);
        waitFor(process.get(), limit, goesOn, &outcome);
    }
    return outcome;
}

} // namespace

Outcome openHiddenAndWait(const QString &program, const QString &parameters,
                          std::chrono::milliseconds limit, const GoesOn &goesOn)
{
    QElapsedTimer timer;
    timer.start();
    Outcome outcome;
    if (!shell_thread::run([&] { outcome = open(program, parameters, limit, goesOn); }))
        noteStartError(noThreadError, &outcome);
    outcome.elapsed = std::chrono::milliseconds(timer.elapsed());
    return outcome;
}

bool startDetached(const QString &program, const QStringList &arguments)
{
    return QProcess::startDetached(system_programs::pathOf(program), arguments);
}

} // namespace shell_launch
