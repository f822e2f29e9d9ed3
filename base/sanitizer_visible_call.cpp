#include "base/sanitizer_visible_call.h"

#include "base/mutex.h"

#include <memory>
#include <utility>

namespace {

// Held while a call is posted, and taken when it runs.
Mutex handOver;

// One call that somebody waits for.
struct Call
{
    Mutex mutex;
    Condition over;
    bool isOver GUARDED_BY(mutex) = false;

    void end()
    {
        const MutexLock lock(mutex);
        isOver = true;
        over.notifyAll();
    }
    void wait()
    {
        MutexLock lock(mutex);
        while (!isOver)
            over.wait(lock);
    }
};

} // namespace

void SanitizerVisibleCall::post(QObject *receiver, std::function<void()> action)
{
    const MutexLock posting(handOver);
    QMetaObject::invokeMethod(
        receiver,
        [action = std::move(action)] {
            handOver.lock();
            handOver.unlock();
            action();
        },
        Qt::QueuedConnection);
}

void SanitizerVisibleCall::postAndWait(QObject *receiver, const std::function<void()> &action)
{
    const auto call = std::make_shared<Call>();
    // Ends the wait also when the receiver goes before it has got to the call.
    std::shared_ptr<void> ending(nullptr, [call](void *) { call->end(); });
    post(receiver, [&action, ending = std::move(ending)] { action(); });
    call->wait();
}
