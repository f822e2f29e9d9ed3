#include "simpc/wake_up.h"

#include <algorithm>

void WakeUp::begin()
{
    pc_.onPlanned([self = shared_from_this()] { self->arm(); });
    arm();
}

void WakeUp::end()
{
    pc_.onPlanned(nullptr);
}

void WakeUp::arm()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    const std::optional<qint64> next = pc_.nextChange();
    if (!next || (!armed_.empty() && *armed_.begin() <= *next))
        return;
    armed_.insert(*next);
    const qint64 left = std::max<qint64>(0, *next - pc_.clock().elapsed());
    thread_.singleShot(pc_.clock(), static_cast<int>(left),
                       [self = shared_from_this(), due = *next] {
                           {
                               const std::lock_guard<std::mutex> relock(self->mutex_);
                               self->armed_.erase(due);
                           }
                           self->pc_.settle();
                           self->arm();
                       });
}
