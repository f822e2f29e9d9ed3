#include "simpc/wake_up.h"

#include <QMutexLocker>

#include <algorithm>
#include <utility>

void WakeUp::begin()
{
    pc_.onPlanned([self = shared_from_this()] { self->arm(); });
    arm();
}

void WakeUp::end()
{
    pc_.onPlanned(nullptr);
    const QMutexLocker lock(&mutex_);
    context_ = nullptr;
}

void WakeUp::post(std::function<void()> task)
{
    const QMutexLocker lock(&mutex_);
    if (context_)
        QMetaObject::invokeMethod(context_, std::move(task), Qt::QueuedConnection);
}

void WakeUp::arm()
{
    const QMutexLocker lock(&mutex_);
    if (!context_)
        return;
    const std::optional<qint64> next = pc_.nextChange();
    if (!next || (!armed_.empty() && *armed_.begin() <= *next))
        return;
    armed_.insert(*next);
    const qint64 left = std::max<qint64>(0, *next - pc_.clock().elapsed());
    pc_.clock().singleShot(static_cast<int>(left), context_,
                           [self = shared_from_this(), due = *next] {
                               {
                                   const QMutexLocker relock(&self->mutex_);
                                   self->armed_.erase(due);
                               }
                               self->pc_.settle();
                               self->arm();
                           });
}
