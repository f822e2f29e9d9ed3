#include "pc/shell_launch.h"

#include "pc/handles_win.h"
#include "pc/system_programs.h"

#include <QElapsedTimer>
#include <QProcess>

#include <thread>

#include <objbase.h>
#include <shellapi.h>

namespace shell_launch {

namespace {

void waitFor(HANDLE process, std::chrono::milliseconds limit, Outcome *outcome)
{
    switch (WaitForSingleObject(process, static_cast<DWORD>(limit.count()))) {
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

Outcome open(const QString &program, const QString &parameters, std::chrono::milliseconds limit)
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
        outcome.startError = GetLastError();
        outcome.startErrorText = qt_error_string(static_cast<int>(outcome.startError)).trimmed();
    } else if (request.hProcess) {
        const KernelHandle process(request.hProcess);
        waitFor(process.get(), limit, &outcome);
    }
    return outcome;
}

} // namespace

Outcome openHiddenAndWait(const QString &program, const QString &parameters,
                          std::chrono::milliseconds limit)
{
    QElapsedTimer timer;
    timer.start();
    Outcome outcome;
    // The shell may dispatch the messages of the thread that calls it. On the
    // caller's thread that would carry out clicks in the middle of whatever
    // the caller is at, and under its locks.
    std::thread shell([&] {
        const bool initialised =
            SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE));
        outcome = open(program, parameters, limit);
        if (initialised)
            CoUninitialize();
    });
    shell.join();
    outcome.elapsed = std::chrono::milliseconds(timer.elapsed());
    return outcome;
}

bool startDetached(const QString &program, const QStringList &arguments)
{
    return QProcess::startDetached(system_programs::pathOf(program), arguments);
}

} // namespace shell_launch
