// A clock that moves only when told to, for tests.
#pragma once

#include "base/clock.h"

#include <QPointer>

#include <mutex>
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
    void sleep(int milliseconds) override;
    void singleShot(int milliseconds, QObject *context, std::function<void()> action) override;
    int startTimer(int milliseconds, QObject *receiver,
                   Qt::TimerType type = Qt::CoarseTimer) override;
    void killTimer(int id, QObject *receiver) override;

    // Moves the clock forward by `milliseconds` and fires what falls due.
    void advance(int milliseconds);

    // How long all sleeps together took, in milliseconds.
    qint64 slept() const;

    // Whether nothing waits any more: no one-shot and no repeating timer.
    bool idle() const;

private:
    struct Pending
    {
        qint64 due;
        quint64 order;
        int period; // 0: one-shot
        int id;     // 0: one-shot
        QPointer<QObject> receiver;
        std::function<void()> action;
    };

    std::vector<Pending> takeDead();
    bool takeNext(qint64 until, Pending *next);

    mutable std::mutex mutex_;
    QDateTime start_;
    qint64 elapsed_ = 0;
    qint64 slept_ = 0;
    quint64 order_ = 0;
    int nextId_ = 1000000;
    std::vector<Pending> pending_;
};
