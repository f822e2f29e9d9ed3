#include "base/sanitizer_visible_call.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <utility>

namespace {

// Held while a call is posted and taken when it runs.
std::mutex handOver;

// One call that somebody waits for.
struct Call
{
    std::mutex mutex;
    std::condition_variable over;
    bool isOver = false;

    void end()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isOver = true;
        over.notify_all();
    }
    void wait()
    {
        std::unique_lock<std::mutex> lock(mutex);
        over.wait(lock, [this] { return isOver; });
    }
};

} // namespace

void SanitizerVisibleCall::post(QObject *receiver, std::function<void()> action)
{
    const std::lock_guard<std::mutex> posting(handOver);
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
