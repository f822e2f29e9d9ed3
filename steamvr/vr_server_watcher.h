// Waits for SteamVR's server to come up.
#pragma once

#include "base/clock.h"

#include <QObject>

#include <functional>

class SharedCell;

// Polls the cell every 50 ms on a thread of its own until it holds the
// value 1, without a limit in time. Then it does what is due, and tries again
// every half second until that is done. Where the system has no thread to give it
// does the same on the thread of its owner.
class VrServerWatcher : public QObject
{
    Q_OBJECT

public:
    // Whether it is done. Called on the watcher's thread.
    using Step = std::function<bool()>;

    // Starts a watcher whose thread deletes itself after `serverUp` is done.
    // `owner` keeps it alive no longer than itself: when `owner` goes, the
    // watcher is stopped and waited for. The cell, the clock and what
    // `serverUp` uses outlive `owner`.
    static void start(QObject *owner, Clock &clock, const SharedCell &cell, Step serverUp);
    // Starts one for which the server is up already and the first attempt made.
    static void tryAgain(QObject *owner, Clock &clock, Step step);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    VrServerWatcher(Clock &clock, const SharedCell *cell, Step serverUp);
    static void start(QObject *owner, Clock &clock, const SharedCell *cell, Step serverUp);
    void begin();
    void end();

    Clock &clock_;
    const SharedCell *cell_; // none once the server is up
    Step serverUp_;
    int timerId_ = 0;
};
