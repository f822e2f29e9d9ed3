// Lets the changes of a simulated PC happen in time without anybody asking.
#pragma once

#include "simpc/host_thread.h"
#include "simpc/sim_timeline.h"

#include <memory>
#include <mutex>
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
    std::mutex mutex_;       // guards the field below
    std::set<qint64> armed_; // for when something is waiting already
};
