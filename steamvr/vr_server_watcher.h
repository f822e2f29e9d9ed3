// Waits for SteamVR's server to come up.
#pragma once

#include "base/clock.h"

#include <QObject>

#include <functional>

class SharedCell;

// Polls the cell every 50 ms on a thread of its own until it holds the
// value 1, without a limit in time.
class VrServerWatcher : public QObject
{
    Q_OBJECT

public:
    // Starts a watcher whose thread deletes itself after it has called
    // `serverUp` (on that thread). `owner` keeps it alive no longer than
    // itself: when `owner` goes, the watcher is stopped and waited for. The
    // cell, the clock and what `serverUp` uses outlive `owner`.
    static void start(QObject *owner, Clock &clock, const SharedCell &cell,
                      std::function<void()> serverUp);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    VrServerWatcher(Clock &clock, const SharedCell &cell, std::function<void()> serverUp);
    void begin();

    Clock &clock_;
    const SharedCell &cell_;
    std::function<void()> serverUp_;
    int timerId_ = 0;
};
