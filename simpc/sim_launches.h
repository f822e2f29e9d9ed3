// What happens when a program is started on a simulated PC.
#pragma once

#include "base/mutex.h"

#include <QHash>
#include <QString>

#include <functional>

class SimRecord;
class SimTimeline;

// One request to start a program.
struct SimLaunch
{
    QString program;    // as the caller wrote it
    QString parameters; // joined by blanks
    bool hidden = false;
    bool elevated = false;   // with administrator rights
    QString workingDir = {}; // empty: the caller's
};

// What comes of it.
struct SimLaunchResult
{
    bool started = true;
    unsigned error = 0;    // the system's error number when not started
    bool hasHandle = true; // whether the caller gets a process to wait for
    int endsAfter = 0;     // milliseconds until that process ends; below 0: never
};

// Any thread.
class SimLaunches
{
public:
    // Each request is written into `journal`.
    SimLaunches(const SimTimeline &timeline, SimRecord &journal)
        : timeline_(timeline), journal_(journal)
    {
    }

    SimLaunches(const SimLaunches &) = delete;
    SimLaunches &operator=(const SimLaunches &) = delete;

    // The handler for the last path component of the program (in any letter
    // case, "steam.exe") decides what happens, as a change; without one a
    // file that there is starts and does nothing, and any other launch fails with
    // error 2 (file not found).
    using Handler = std::function<SimLaunchResult(const SimLaunch &)>;
    void on(const QString &programName, Handler handler);
    SimLaunchResult start(const SimLaunch &request);

private:
    const SimTimeline &timeline_;
    SimRecord &journal_;
    Mutex mutex_; // never held while calling back
    QHash<QString, Handler> handlers_ GUARDED_BY(mutex_);
};
