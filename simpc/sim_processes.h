// The processes of a simulated PC.
#pragma once

#include "base/mutex.h"
#include "pc/processes.h"

#include <QString>

#include <atomic>
#include <functional>
#include <vector>

class SimTimeline;

// Any thread; names are compared with their letter case.
class SimProcesses
{
public:
    explicit SimProcesses(const SimTimeline &timeline) : timeline_(timeline) {}

    SimProcesses(const SimProcesses &) = delete;
    SimProcesses &operator=(const SimProcesses &) = delete;

    // `path` of the executable, forward or backward slashes as given.
    quint32 start(const QString &name, const QString &path = QString());
    void end(quint32 pid);
    void endAll(const QString &name);
    // Called after a process has ended, whoever ended it; as a change. Several
    // listeners are called in the order of these calls and stay as long as
    // this.
    void onEnded(std::function<void(const processes::Entry &)> listener);

    bool isRunning(const QString &name) const;
    // As the functions of pc/processes.h, in the order of their starts.
    std::vector<processes::Entry> list() const;
    QString modulePath(quint32 pid) const;
    // How often they were listed for the program.
    int listings() const { return listings_; }
    void countListing() { ++listings_; }

    // Processes of the real machine that count as this PC's, asked for at every
    // look at the processes; they come after its own. Their ends are not told
    // of.
    struct HostProcesses
    {
        std::function<std::vector<processes::Entry>()> list;
        std::function<QString(quint32 pid)> modulePath; // empty when it is none of them
        std::function<void(quint32 pid)> end;           // nothing when it is none of them
    };
    void setHostProcesses(HostProcesses processes);

private:
    struct Process
    {
        processes::Entry entry;
        QString path;
    };

    void endWhere(const std::function<bool(const processes::Entry &)> &ends);
    HostProcesses hostProcesses() const;

    const SimTimeline &timeline_;
    std::atomic<int> listings_{0};
    mutable Mutex mutex_; // never held while calling back
    std::vector<Process> processes_ GUARDED_BY(mutex_);
    quint32 nextPid_ GUARDED_BY(mutex_) = 1000;
    std::vector<std::function<void(const processes::Entry &)>> listeners_ GUARDED_BY(mutex_);
    HostProcesses hostProcesses_ GUARDED_BY(mutex_);
};
