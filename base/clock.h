// Time, for the whole program.
//
// This is the only place that knows real time: every wait, delay, timer and
// time stamp of the program goes through a Clock, so that a test can put a
// ManualClock in its place and walk through minutes in microseconds.
#pragma once

#include <QDateTime>
#include <QObject>

#include <chrono>
#include <functional>

class Clock
{
public:
    virtual ~Clock() = default;

    // The local wall-clock time. Any thread.
    virtual QDateTime now() const = 0;

    // The same moment in milliseconds since 1970 in UTC. Far cheaper than now(),
    // which has to ask for the time zone. Any thread.
    virtual qint64 epochMilliseconds() const { return now().toMSecsSinceEpoch(); }

    // Milliseconds since an arbitrary start; never runs backwards. Any thread.
    virtual qint64 elapsed() const = 0;

    // Blocks the calling thread for `duration`; 0 or less returns at once. Any
    // thread.
    virtual void sleep(std::chrono::milliseconds duration) = 0;

    // Runs `action` once on the thread of `context`, `delay` after this call,
    // never during it; less than 0 counts as 0. Nothing runs when `context` is
    // destroyed before. May be called from any thread, also one without an
    // event loop; the delay counts from the call, not from the moment at which
    // the thread of `context` notices it.
    virtual void singleShot(std::chrono::milliseconds delay, QObject *context,
                            std::function<void()> action) = 0;

    // Starts a repeating timer whose ticks reach `receiver` as QTimerEvent, and
    // returns its id, which is never 0. Both calls on the thread of `receiver`.
    virtual int startTimer(std::chrono::milliseconds interval, QObject *receiver,
                           Qt::TimerType type = Qt::CoarseTimer) = 0;
    virtual void killTimer(int id, QObject *receiver) = 0;

    // The clock of the product.
    static Clock &system();

    // Lets the product's clock run `factor` times as fast as real time, for
    // demonstrations and end-to-end tests. Call it before anything waits.
    static void setSystemSpeed(double factor);
};
