// Lets the changes of a simulated PC happen in time without anybody asking.
#pragma once

#include "base/mutex.h"
#include "simpc/host_thread.h"
#include "simpc/sim_timeline.h"

#include <memory>
#include <set>

// Sleeps between the changes: an idle PC causes no wake-ups. The changes run on
// a HostThread.
class ChangeTimer : public std::enable_shared_from_this<ChangeTimer>
{
public:
    // Both outlive the thread's stop().
    ChangeTimer(SimTimeline &timeline, HostThread &thread) : timeline_(timeline), thread_(thread) {}

    // Watches for changes from now on; the thread must run. Any thread.
    void begin();
    void end();

private:
    void arm();

    SimTimeline &timeline_;
    HostThread &thread_;
    Mutex mutex_;
    std::set<qint64> armed_ GUARDED_BY(mutex_); // for when something is waiting already
};
