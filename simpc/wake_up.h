// Lets the changes of a simulated PC happen in time without anybody asking.
#pragma once

#include "simpc/sim_pc.h"

#include <QMutex>
#include <QObject>

#include <memory>
#include <set>

// Sleeps between the changes: an idle PC causes no wake-ups. The changes run on
// the thread of the context, whose event loop does the waiting.
class WakeUp : public std::enable_shared_from_this<WakeUp>
{
public:
    // `pc` outlives the context.
    WakeUp(SimPc &pc, QObject *context) : pc_(pc), context_(context) {}

    // Begins to watch for changes. Any thread.
    void begin();
    // Nothing runs on the context any more once this has returned, except what
    // is running at this moment. Any thread.
    void end();

    // Runs `task` on the context soon; not after end(). Any thread.
    void post(std::function<void()> task);

private:
    void arm();

    SimPc &pc_;
    QMutex mutex_; // guards the fields below
    QObject *context_;
    std::set<qint64> armed_; // for when something is waiting already
};
