#include "pc/command_pipe.h"

#include "pc/own_variables.h"
#include "simpc/sim_pc.h"

#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

struct CommandPipe::Private
{
    int readEnd = -1;
};

namespace {

// The shell that the program waits for ends at once and leaves the script to
// the system, so that nothing of it is left to be waited for.
bool runDetached(const QByteArray &script, int output)
{
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
    char shell[] = "sh";
    char option[] = "-c";
    char leave[] = "sh -c \"$0\" &";
    QByteArray text = script;
    char *arguments[] = {shell, option, leave, text.data(), nullptr};
    QList<QByteArray> variables;
    for (const QString &variable : own_variables::forChildren().toStringList())
        variables.append(variable.toLocal8Bit());
    std::vector<char *> environment;
    for (QByteArray &variable : variables)
        environment.push_back(variable.data());
    environment.push_back(nullptr);
    pid_t pid = 0;
    const bool started =
        ::posix_spawnp(&pid, shell, &actions, nullptr, arguments, environment.data()) == 0;
    posix_spawn_file_actions_destroy(&actions);
    return started && ::waitpid(pid, nullptr, 0) == pid;
}

} // namespace

// What a command prints is the simulated PC's to say; that it prints it, into
// a real pipe and from a process of its own, is not simulated. What is run is
// written into the journal ("command netsh ...").
CommandPipe::CommandPipe(const QByteArray &commandLine) : d(std::make_unique<Private>())
{
    SimPc &pc = SimPc::current();
    const QString line = QString::fromUtf8(commandLine);
    pc.timeline.settle();
    pc.journal.add("command " + line);
    const SimCommands commands = pc.facts.commands.get();
    const auto script = commands.constFind(line.section(' ', 0, 0));
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        failure_ = NoPipe;
        return;
    }
    d->readEnd = ends[0];
    failure_ = NoProcess;
    if (script != commands.constEnd() && runDetached(*script, ends[1]))
        failure_ = None;
    ::close(ends[1]);
}

CommandPipe::~CommandPipe()
{
    if (d->readEnd >= 0)
        ::close(d->readEnd);
}

int CommandPipe::read(char *data, int size)
{
    ssize_t got = 0;
    do
        got = ::read(d->readEnd, data, static_cast<size_t>(size));
    while (got < 0 && errno == EINTR);
    return got > 0 ? static_cast<int>(got) : -1;
}
