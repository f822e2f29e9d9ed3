#include "simpc/change_timer.h"

#include <algorithm>

void ChangeTimer::begin()
{
    timeline_.onPlanned([self = shared_from_this()] { self->arm(); });
    arm();
}

void ChangeTimer::end()
{
    timeline_.onPlanned(nullptr);
}

void ChangeTimer::arm()
{
    const MutexLock lock(mutex_);
    const std::optional<qint64> next = timeline_.nextChange();
    if (!next || (!armed_.empty() && *armed_.begin() <= *next))
        return;
    armed_.insert(*next);
    const qint64 left = std::max<qint64>(0, *next - timeline_.clock().elapsed());
    thread_.singleShot(timeline_.clock(), static_cast<int>(left),
                       [self = shared_from_this(), due = *next] {
                           {
                               const MutexLock relock(self->mutex_);
                               self->armed_.erase(due);
                           }
                           self->timeline_.settle();
                           self->arm();
                       });
}
