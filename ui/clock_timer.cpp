#include "ui/clock_timer.h"

#include "base/clock.h"

#include <QTimerEvent>

ClockTimer::ClockTimer(QObject *parent) : ClockTimer(Clock::system(), parent) {}

ClockTimer::ClockTimer(Clock &clock, QObject *parent) : QObject(parent), clock_(clock) {}

ClockTimer::~ClockTimer()
{
    running_ = false;
    schedule();
}

void ClockTimer::setInterval(int milliseconds)
{
    if (interval_ == milliseconds)
        return;
    interval_ = milliseconds;
    schedule();
    emit intervalChanged();
}

void ClockTimer::setRunning(bool running)
{
    if (running_ == running)
        return;
    running_ = running;
    schedule();
    emit runningChanged();
}

void ClockTimer::setRepeat(bool repeat)
{
    if (repeat_ == repeat)
        return;
    repeat_ = repeat;
    emit repeatChanged();
}

void ClockTimer::restart()
{
    stop();
    start();
}

void ClockTimer::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != id_)
        return;
    if (!repeat_)
        stop();
    emit triggered();
}

// The clock's timer is there exactly while this one runs, counted from now.
void ClockTimer::schedule()
{
    if (id_ != 0)
        clock_.killTimer(id_, this);
    id_ = running_ ? clock_.startTimer(std::chrono::milliseconds(interval_), this, Qt::PreciseTimer)
                   : 0;
}
