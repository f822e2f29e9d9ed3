#include "simpc/sim_processes.h"

#include "simpc/sim_timeline.h"

#include <algorithm>
#include <utility>

quint32 SimProcesses::start(const QString &name, const QString &path)
{
    const MutexLock lock(mutex_);
    const quint32 pid = nextPid_;
    nextPid_ += 4;
    processes_.push_back({{pid, name}, path});
    return pid;
}

void SimProcesses::end(quint32 pid)
{
    const HostProcesses host = hostProcesses();
    if (host.end)
        host.end(pid);
    endWhere([pid](const processes::Entry &process) { return process.pid == pid; });
}

void SimProcesses::endAll(const QString &name)
{
    endWhere([&name](const processes::Entry &process) { return process.name == name; });
}

void SimProcesses::endWhere(const std::function<bool(const processes::Entry &)> &ends)
{
    const SimTimeline::OneAtATime oneAtATime = timeline_.oneAtATime();
    std::vector<Process> ended;
    std::vector<std::function<void(const processes::Entry &)>> listeners;
    {
        const MutexLock lock(mutex_);
        const auto rest =
            std::stable_partition(processes_.begin(), processes_.end(),
                                  [&ends](const Process &process) { return !ends(process.entry); });
        ended.assign(rest, processes_.end());
        processes_.erase(rest, processes_.end());
        listeners = listeners_;
    }
    for (const auto &listener : listeners) {
        for (const Process &process : ended)
            listener(process.entry);
    }
}

void SimProcesses::onEnded(std::function<void(const processes::Entry &)> listener)
{
    const MutexLock lock(mutex_);
    listeners_.push_back(std::move(listener));
}

bool SimProcesses::isRunning(const QString &name) const
{
    const std::vector<processes::Entry> all = list();
    return std::any_of(all.begin(), all.end(),
                       [&name](const processes::Entry &process) { return process.name == name; });
}

std::vector<processes::Entry> SimProcesses::list() const
{
    timeline_.settle();
    std::vector<processes::Entry> all;
    {
        const MutexLock lock(mutex_);
        for (const Process &process : processes_)
            all.push_back(process.entry);
    }
    const HostProcesses host = hostProcesses();
    if (host.list) {
        const std::vector<processes::Entry> here = host.list();
        all.insert(all.end(), here.begin(), here.end());
    }
    return all;
}

QString SimProcesses::modulePath(quint32 pid) const
{
    timeline_.settle();
    {
        const MutexLock lock(mutex_);
        for (const Process &process : processes_) {
            if (process.entry.pid == pid)
                return process.path;
        }
    }
    const HostProcesses host = hostProcesses();
    return host.modulePath ? host.modulePath(pid) : QString();
}

void SimProcesses::setHostProcesses(HostProcesses processes)
{
    const MutexLock lock(mutex_);
    hostProcesses_ = std::move(processes);
}

SimProcesses::HostProcesses SimProcesses::hostProcesses() const
{
    const MutexLock lock(mutex_);
    return hostProcesses_;
}
