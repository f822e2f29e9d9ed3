#include "base/clock.h"

#include "base/sanitizer_visible_call.h"

#include <QElapsedTimer>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cmath>

namespace {

class SystemClock final : public Clock
{
public:
    SystemClock() : start_(QDateTime::currentDateTime()) { timer_.start(); }

    QDateTime now() const override
    {
        if (speed_ == 1.0)
            return QDateTime::currentDateTime();
        return start_.addMSecs(elapsed());
    }

    qint64 epochMilliseconds() const override
    {
        if (speed_ == 1.0)
            return QDateTime::currentMSecsSinceEpoch();
        return start_.toMSecsSinceEpoch() + elapsed();
    }

    qint64 elapsed() const override
    {
        if (speed_ == 1.0)
            return timer_.elapsed();
        return static_cast<qint64>(static_cast<double>(timer_.nsecsElapsed()) * speed_ / 1e6);
    }

    void sleep(int milliseconds) override
    {
        if (milliseconds > 0)
            QThread::usleep(static_cast<unsigned long>(milliseconds * 1000.0 / speed_));
    }

    void singleShot(int milliseconds, QObject *context, std::function<void()> action) override
    {
        if (context->thread() == QThread::currentThread()) {
            QTimer::singleShot(real(milliseconds), Qt::PreciseTimer, context, std::move(action));
            return;
        }
        // The thread of `context` may be busy: only what is left of the delay
        // is waited for when it gets to this.
        const qint64 due = elapsed() + std::max(0, milliseconds);
        SanitizerVisibleCall::post(context, [this, due, context, action = std::move(action)] {
            const int left = static_cast<int>(std::max<qint64>(0, due - elapsed()));
            QTimer::singleShot(real(left), Qt::PreciseTimer, context, action);
        });
    }

    int startTimer(int milliseconds, QObject *receiver, Qt::TimerType type) override
    {
        return receiver->startTimer(real(milliseconds), type);
    }

    void killTimer(int id, QObject *receiver) override { receiver->killTimer(id); }

    void setSpeed(double factor) { speed_ = factor > 0 ? factor : 1.0; }

private:
    int real(int milliseconds) const
    {
        return static_cast<int>(std::ceil(std::max(0, milliseconds) / speed_));
    }

    QDateTime start_;
    QElapsedTimer timer_;
    std::atomic<double> speed_{1.0};
};

SystemClock &systemClock()
{
    static SystemClock clock;
    return clock;
}

} // namespace

Clock &Clock::system()
{
    return systemClock();
}

void Clock::setSystemSpeed(double factor)
{
    systemClock().setSpeed(factor);
}
