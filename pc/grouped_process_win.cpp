#include "pc/grouped_process.h"

#include "pc/handles_win.h"

#include <tlhelp32.h>

struct GroupedProcess::Private
{
    KernelHandle job;
};

namespace {

void setLimits(HANDLE job, DWORD limits)
{
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION information = {};
    information.BasicLimitInformation.LimitFlags = limits;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &information,
                            sizeof information);
}

// Nobody hands out the thread of a program that was started suspended.
void resume(DWORD pid)
{
    const KernelHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(snapshot.get(), &entry); more;
         more = Thread32Next(snapshot.get(), &entry)) {
        if (entry.th32OwnerProcessID != pid)
            continue;
        const KernelHandle thread(OpenThread(THREAD_SUSPEND_RESUME, FALSE, entry.th32ThreadID));
        ResumeThread(thread.get());
    }
}

} // namespace

GroupedProcess::GroupedProcess(QObject *parent) : QProcess(parent), d(std::make_unique<Private>())
{
    // Whatever it starts before it is in the job would never get there.
    setCreateProcessArgumentsModifier(
        [](CreateProcessArguments *arguments) { arguments->flags |= CREATE_SUSPENDED; });
    connect(this, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, [this] {
        setLimits(d->job.get(), 0);
        d->job.reset();
    });
}

GroupedProcess::~GroupedProcess()
{
    disconnect(this, nullptr, this, nullptr);
}

void GroupedProcess::startGroup(const QString &program, const QStringList &arguments)
{
    const bool isFree = state() == NotRunning;
    start(program, arguments, QIODevice::ReadWrite);
    if (!isFree || state() == NotRunning)
        return;
    const auto pid = static_cast<DWORD>(processId());
    const KernelHandle process(OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE, FALSE, pid));
    d->job.reset(CreateJobObjectW(nullptr, nullptr));
    setLimits(d->job.get(), JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE);
    AssignProcessToJobObject(d->job.get(), process.get());
    resume(pid);
}

void GroupedProcess::endGroup()
{
    TerminateJobObject(d->job.get(), 1);
    // It alone, where it could not be put into the job.
    kill();
}

void GroupedProcess::setupChildProcess() {}
