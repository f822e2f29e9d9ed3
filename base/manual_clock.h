// A clock that moves only when told to, for tests.
#pragma once

#include "base/clock.h"
#include "base/mutex.h"

#include <QPointer>

#include <vector>

// advance() fires everything that falls due on the way in the order of the
// deadlines, equal deadlines in the order in which they were asked for.
// Sleeping advances the clock as well, but fires nothing that belongs to the
// sleeping thread until advance() is called: a thread that sleeps does not run
// its timers.
//
// advance() belongs to one thread, the test's. Whatever is due on another
// thread's objects is run there, and advance() waits for it.
class ManualClock final : public Clock
{
public:
    explicit ManualClock(const QDateTime &start = QDateTime({2024, 5, 17}, {14, 3, 7, 215}));

    QDateTime now() const override;
    qint64 elapsed() const override;
    void sleep(std::chrono::milliseconds duration) override;
    void singleShot(std::chrono::milliseconds delay, QObject *context,
                    std::function<void()> action) override;
    int startTimer(std::chrono::milliseconds interval, QObject *receiver,
                   Qt::TimerType type = Qt::CoarseTimer) override;
    using Clock::singleShot;
    using Clock::sleep;
    using Clock::startTimer;
    void killTimer(int id, QObject *receiver) override;

    // Moves the clock forward by `duration` and fires what falls due.
    void advance(std::chrono::milliseconds duration);
    void advance(int milliseconds) { advance(std::chrono::milliseconds(milliseconds)); }

    // How long all sleeps together took, in milliseconds.
    qint64 slept() const;

    // Whether nothing waits any more: no one-shot and no repeating timer.
    bool idle() const;

private:
    struct Pending
    {
        std::chrono::milliseconds due;
        quint64 order;
        std::chrono::milliseconds period; // 0: one-shot
        int id;                           // 0: one-shot
        QPointer<QObject> receiver;
        std::function<void()> action;
    };

    std::vector<Pending> takeDead();
    bool takeNext(std::chrono::milliseconds until, Pending *next);

    mutable Mutex mutex_;
    const QDateTime start_;
    std::chrono::milliseconds elapsed_ GUARDED_BY(mutex_){0};
    std::chrono::milliseconds slept_ GUARDED_BY(mutex_){0};
    quint64 order_ GUARDED_BY(mutex_) = 0;
    int nextId_ GUARDED_BY(mutex_) = 1000000;
    std::vector<Pending> pending_ GUARDED_BY(mutex_);
};
