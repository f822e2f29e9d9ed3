#include "simpc/sim_record.h"

#include "simpc/sim_timeline.h"

#include <utility>

void SimRecord::add(const QString &line)
{
    std::vector<std::function<void(const QString &)>> listeners;
    {
        const MutexLock lock(mutex_);
        lines_.append(line);
        listeners = listeners_;
    }
    for (const auto &listener : listeners)
        listener(line);
}

QStringList SimRecord::lines() const
{
    if (timeline_)
        timeline_->settle();
    const MutexLock lock(mutex_);
    return lines_;
}

void SimRecord::clear()
{
    const MutexLock lock(mutex_);
    lines_.clear();
}

void SimRecord::onLine(std::function<void(const QString &)> listener)
{
    const MutexLock lock(mutex_);
    listeners_.push_back(std::move(listener));
}
