// Lets the changes of a simulated PC happen in time without anybody asking.
#pragma once

#include "simpc/host_thread.h"
#include "simpc/sim_pc.h"

#include <memory>
#include <mutex>
#include <set>

// Sleeps between the changes: an idle PC causes no wake-ups. The changes run on
// a HostThread.
class WakeUp : public std::enable_shared_from_this<WakeUp>
{
public:
    // Both outlive the thread's stop().
    WakeUp(SimPc &pc, HostThread &thread) : pc_(pc), thread_(thread) {}

    // Watches for changes from now on; the thread must run. Any thread.
    void begin();
    void end();

private:
    void arm();

    SimPc &pc_;
    HostThread &thread_;
    std::mutex mutex_;       // guards the field below
    std::set<qint64> armed_; // for when something is waiting already
};
