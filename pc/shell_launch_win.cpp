#include "pc/shell_launch.h"

#include "pc/handles_win.h"

#include <QElapsedTimer>
#include <QProcess>

#include <shellapi.h>

namespace shell_launch {

Outcome openHiddenAndWait(const QString &program, const QString &parameters,
                          std::chrono::milliseconds limit)
{
    QElapsedTimer timer;
    timer.start();
    const QByteArray file = program.toLocal8Bit();
    const QByteArray arguments = parameters.toLocal8Bit();
    SHELLEXECUTEINFOA request = {};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_NOCLOSEPROCESS;
    request.lpVerb = "open";
    request.lpFile = file.constData();
    request.lpParameters = arguments.constData();
    request.nShow = SW_HIDE;

    Outcome outcome;
    outcome.started = ShellExecuteExA(&request) != FALSE;
    if (!outcome.started) {
        outcome.startError = GetLastError();
    } else if (request.hProcess) {
        const KernelHandle process(request.hProcess);
        switch (WaitForSingleObject(process.get(), static_cast<DWORD>(limit.count()))) {
        case WAIT_OBJECT_0:
            outcome.wait = Outcome::Ended;
            break;
        case WAIT_TIMEOUT:
            outcome.wait = Outcome::TimedOut;
            break;
        default:
            outcome.wait = Outcome::WaitFailed;
            outcome.waitError = GetLastError();
            break;
        }
    }
    outcome.elapsed = std::chrono::milliseconds(timer.elapsed());
    return outcome;
}

bool startDetached(const QString &program, const QStringList &arguments)
{
    return QProcess::startDetached(program, arguments);
}

} // namespace shell_launch
