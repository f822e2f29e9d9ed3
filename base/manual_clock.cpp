#include "base/manual_clock.h"

#include "base/sanitizer_visible_call.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;
using std::chrono::milliseconds;

ManualClock::ManualClock(const QDateTime &start) : start_(start) {}

QDateTime ManualClock::now() const
{
    const MutexLock lock(mutex_);
    return start_.addMSecs(elapsed_.count());
}

qint64 ManualClock::elapsed() const
{
    const MutexLock lock(mutex_);
    return elapsed_.count();
}

void ManualClock::sleep(milliseconds duration)
{
    if (duration <= 0ms)
        return;
    const MutexLock lock(mutex_);
    elapsed_ += duration;
    slept_ += duration;
}

void ManualClock::singleShot(milliseconds delay, QObject *context, std::function<void()> action)
{
    const MutexLock lock(mutex_);
    pending_.push_back(
        {elapsed_ + std::max(0ms, delay), order_++, 0ms, 0, context, std::move(action)});
}

int ManualClock::startTimer(milliseconds interval, QObject *receiver, Qt::TimerType)
{
    const MutexLock lock(mutex_);
    const int id = nextId_++;
    pending_.push_back(
        {elapsed_ + interval, order_++, std::max(1ms, interval), id, receiver, [receiver, id] {
             QTimerEvent event(id);
             QCoreApplication::sendEvent(receiver, &event);
         }});
    return id;
}

void ManualClock::killTimer(int id, QObject *)
{
    const MutexLock lock(mutex_);
    pending_.erase(std::remove_if(pending_.begin(), pending_.end(),
                                  [id](const Pending &entry) { return entry.id == id; }),
                   pending_.end());
}

void ManualClock::advance(milliseconds duration)
{
    const milliseconds until = milliseconds(elapsed()) + duration;
    for (;;) {
        Pending next;
        if (!takeNext(until, &next))
            break;
        QObject *const receiver = next.receiver;
        if (!receiver)
            continue;
        if (receiver->thread() == QThread::currentThread())
            next.action();
        else
            SanitizerVisibleCall::postAndWait(receiver, next.action);
    }
    const MutexLock lock(mutex_);
    elapsed_ = std::max(elapsed_, until);
}

// What a dead receiver leaves behind is destroyed by the caller, outside the
// lock: an action may own objects that use the clock when they go.
std::vector<ManualClock::Pending> ManualClock::takeDead()
{
    const MutexLock lock(mutex_);
    const auto dead =
        std::stable_partition(pending_.begin(), pending_.end(),
                              [](const Pending &entry) { return !entry.receiver.isNull(); });
    std::vector<Pending> taken(std::make_move_iterator(dead),
                               std::make_move_iterator(pending_.end()));
    pending_.erase(dead, pending_.end());
    return taken;
}

bool ManualClock::takeNext(milliseconds until, Pending *next)
{
    takeDead();
    const MutexLock lock(mutex_);
    const auto first =
        std::min_element(pending_.begin(), pending_.end(), [](const Pending &a, const Pending &b) {
            return a.due != b.due ? a.due < b.due : a.order < b.order;
        });
    // An action that sleeps pushes the clock past `until`; what fell due
    // meanwhile waits for the next advance(), as for the next turn of an event
    // loop.
    if (first == pending_.end() || first->due > until)
        return false;
    elapsed_ = std::max(elapsed_, first->due);
    *next = *first;
    if (first->period > 0ms) {
        first->due += first->period;
        if (first->due < elapsed_)
            first->due = elapsed_ + first->period;
        first->order = order_++;
    } else {
        pending_.erase(first);
    }
    return true;
}

qint64 ManualClock::slept() const
{
    const MutexLock lock(mutex_);
    return slept_.count();
}

bool ManualClock::idle() const
{
    const MutexLock lock(mutex_);
    return std::all_of(pending_.begin(), pending_.end(),
                       [](const Pending &entry) { return entry.receiver.isNull(); });
}
