#include "base/clock.h"

#include "base/sanitizer_visible_call.h"

#include <QElapsedTimer>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cmath>

using namespace std::chrono_literals;
using std::chrono::milliseconds;

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

    void sleep(milliseconds duration) override
    {
        if (duration > 0ms)
            QThread::usleep(static_cast<unsigned long>(duration.count() * 1000.0 / speed_));
    }

    void singleShot(milliseconds delay, QObject *context, std::function<void()> action) override
    {
        if (context->thread() == QThread::currentThread()) {
            QTimer::singleShot(real(delay), Qt::PreciseTimer, context, std::move(action));
            return;
        }
        // The thread of `context` may be busy: only what is left of the delay
        // is waited for when it gets to this.
        const milliseconds due = milliseconds(elapsed()) + std::max(0ms, delay);
        SanitizerVisibleCall::post(context, [this, due, context, action = std::move(action)] {
            QTimer::singleShot(real(due - milliseconds(elapsed())), Qt::PreciseTimer, context,
                               action);
        });
    }

    int startTimer(milliseconds interval, QObject *receiver, Qt::TimerType type) override
    {
        return receiver->startTimer(real(interval), type);
    }

    void killTimer(int id, QObject *receiver) override { receiver->killTimer(id); }

    void setSpeed(double factor) { speed_ = factor > 0 ? factor : 1.0; }

private:
    // How long it is outside of this program, if it is to come.
    milliseconds real(milliseconds duration) const
    {
        const double length = static_cast<double>(std::max(0ms, duration).count());
        return milliseconds(static_cast<qint64>(std::ceil(length / speed_)));
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
