// The time of a simulated PC: what is planned happens when it is due, one
// change after the other.
#pragma once

#include "base/clock.h"
#include "base/mutex.h"

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

// Any thread. Changes that are due happen before the next question to the PC is
// answered, in the order of their times, on whichever thread asks: every part
// of the PC calls settle() before it answers. Whatever calls somebody back
// (changes, launch handlers, listeners of the USB cable, ...) does so under
// oneAtATime(): such calls run one at a time, and meanwhile other threads'
// questions wait. They may ask and change the PC, but must not wait for another
// thread. A question asked within a change sees the world as far as it has got.
class SimTimeline
{
public:
    explicit SimTimeline(Clock &clock) : clock_(clock) {}

    SimTimeline(const SimTimeline &) = delete;
    SimTimeline &operator=(const SimTimeline &) = delete;

    Clock &clock() const { return clock_; }

    // The world's time in milliseconds: the clock's elapsed(), and within a
    // change the moment at which that change was due. So a chain of changes
    // keeps its times however late somebody asks.
    qint64 now() const;

    // Makes `change` happen `milliseconds` from now().
    void after(int milliseconds, std::function<void()> change);
    // Lets everything happen that is due.
    void settle() const;
    // When the next change is due, by the clock's elapsed(); nothing if none.
    std::optional<qint64> nextChange() const;
    // Called, on whichever thread, when something was added by after().
    void onPlanned(std::function<void()> notify);

    // For a part of the PC that calls back: holds off all other changes and the
    // questions of other threads. Taken before the part's own lock, never after
    // it, and that is not held while calling back.
    using OneAtATime = std::unique_lock<std::recursive_mutex>;
    [[nodiscard]] OneAtATime oneAtATime() const { return OneAtATime(happening_); }

private:
    struct Change
    {
        qint64 due;
        std::function<void()> happen;
    };

    std::optional<Change> takeDueChange() const;

    Clock &clock_;
    mutable std::recursive_mutex happening_;  // held while the world calls back; before mutex_
    mutable std::optional<qint64> changeDue_; // of the change that happens; guarded by happening_
    mutable Mutex mutex_;                     // never held while calling back
    mutable std::vector<Change> changes_ GUARDED_BY(mutex_);
    std::function<void()> plannedListener_ GUARDED_BY(mutex_);
};
