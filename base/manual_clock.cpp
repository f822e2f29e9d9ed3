#include "base/manual_clock.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimerEvent>

#include <algorithm>

ManualClock::ManualClock(const QDateTime &start) : start_(start) {}

QDateTime ManualClock::now() const
{
    const QMutexLocker lock(&mutex_);
    return start_.addMSecs(elapsed_);
}

qint64 ManualClock::elapsed() const
{
    const QMutexLocker lock(&mutex_);
    return elapsed_;
}

void ManualClock::sleep(int milliseconds)
{
    if (milliseconds <= 0)
        return;
    const QMutexLocker lock(&mutex_);
    elapsed_ += milliseconds;
    slept_ += milliseconds;
}

void ManualClock::singleShot(int milliseconds, QObject *context, std::function<void()> action)
{
    const QMutexLocker lock(&mutex_);
    pending_.push_back({elapsed_ + milliseconds, order_++, 0, 0, context, std::move(action)});
}

int ManualClock::startTimer(int milliseconds, QObject *receiver, Qt::TimerType)
{
    const QMutexLocker lock(&mutex_);
    const int id = nextId_++;
    pending_.push_back({elapsed_ + milliseconds, order_++, std::max(1, milliseconds), id, receiver,
                        [receiver, id] {
                            QTimerEvent event(id);
                            QCoreApplication::sendEvent(receiver, &event);
                        }});
    return id;
}

void ManualClock::killTimer(int id, QObject *)
{
    const QMutexLocker lock(&mutex_);
    pending_.erase(std::remove_if(pending_.begin(), pending_.end(),
                                  [id](const Pending &entry) { return entry.id == id; }),
                   pending_.end());
}

void ManualClock::advance(int milliseconds)
{
    const qint64 until = elapsed() + milliseconds;
    Pending next;
    while (takeNext(until, &next)) {
        QObject *receiver = next.receiver;
        if (receiver->thread() == QThread::currentThread())
            next.action();
        else
            QMetaObject::invokeMethod(receiver, next.action, Qt::BlockingQueuedConnection);
    }
    const QMutexLocker lock(&mutex_);
    elapsed_ = std::max(elapsed_, until);
}

bool ManualClock::takeNext(qint64 until, Pending *next)
{
    const QMutexLocker lock(&mutex_);
    pending_.erase(std::remove_if(pending_.begin(), pending_.end(),
                                  [](const Pending &entry) { return entry.receiver.isNull(); }),
                   pending_.end());
    const auto first = std::min_element(pending_.begin(), pending_.end(),
                                        [](const Pending &a, const Pending &b) {
                                            return a.due != b.due ? a.due < b.due
                                                                  : a.order < b.order;
                                        });
    // An action that sleeps pushes the clock past `until`; what fell due
    // meanwhile waits for the next advance(), as for the next turn of an event
    // loop.
    if (first == pending_.end() || first->due > until)
        return false;
    elapsed_ = std::max(elapsed_, first->due);
    *next = *first;
    if (first->period > 0) {
        // A tick that was slept over is not made up for.
        first->due = std::max(first->due + first->period, elapsed_);
        first->order = order_++;
    } else {
        pending_.erase(first);
    }
    return true;
}

qint64 ManualClock::slept() const
{
    const QMutexLocker lock(&mutex_);
    return slept_;
}

bool ManualClock::idle() const
{
    const QMutexLocker lock(&mutex_);
    return pending_.empty();
}
