#include "simpc/sim_timeline.h"

#include <algorithm>
#include <utility>

qint64 SimTimeline::now() const
{
    const OneAtATime lock = oneAtATime();
    return changeDue_ ? *changeDue_ : clock_.elapsed();
}

void SimTimeline::after(int milliseconds, std::function<void()> change)
{
    const qint64 due = now() + milliseconds;
    std::function<void()> notify;
    {
        const MutexLock lock(mutex_);
        changes_.push_back({due, std::move(change)});
        notify = plannedListener_;
    }
    if (notify)
        notify();
}

std::optional<SimTimeline::Change> SimTimeline::takeDueChange() const
{
    const MutexLock lock(mutex_);
    // Among equals this finds the one that was planned first.
    const auto first =
        std::min_element(changes_.begin(), changes_.end(),
                         [](const Change &a, const Change &b) { return a.due < b.due; });
    if (first == changes_.end() || first->due > clock_.elapsed())
        return std::nullopt;
    std::optional<Change> change = std::move(*first);
    changes_.erase(first);
    return change;
}

void SimTimeline::settle() const
{
    // Whoever asks while another thread lets things happen waits until they
    // have happened; a question asked within a change does not start the next.
    const OneAtATime lock = oneAtATime();
    if (changeDue_)
        return;
    while (const std::optional<Change> change = takeDueChange()) {
        changeDue_ = change->due;
        change->happen();
        changeDue_.reset();
    }
}

std::optional<qint64> SimTimeline::nextChange() const
{
    const MutexLock lock(mutex_);
    std::optional<qint64> next;
    for (const Change &change : changes_) {
        if (!next || change.due < *next)
            next = change.due;
    }
    return next;
}

void SimTimeline::onPlanned(std::function<void()> notify)
{
    const MutexLock lock(mutex_);
    plannedListener_ = std::move(notify);
}
