#include "pc/grouped_process.h"

#include <csignal>

#include <unistd.h>

struct GroupedProcess::Private
{
};

GroupedProcess::GroupedProcess(QObject *parent) : QProcess(parent), d(std::make_unique<Private>())
{
}

GroupedProcess::~GroupedProcess()
{
    endGroup();
}

void GroupedProcess::startGroup(const QString &program, const QStringList &arguments)
{
    start(program, arguments, QIODevice::ReadWrite);
    // Whichever of the two comes first: from now on the group is there.
    if (state() != NotRunning)
        ::setpgid(static_cast<pid_t>(processId()), 0);
}

void GroupedProcess::endGroup()
{
    if (state() != NotRunning)
        ::kill(-static_cast<pid_t>(processId()), SIGKILL);
}

void GroupedProcess::setupChildProcess()
{
    ::setpgid(0, 0);
}
