#include "link/outbox.h"

#include <optional>
#include <utility>

bool Outbox::open()
{
    if (wakeUp_.sender)
        return true;
    socket_api::initialise();
    std::optional<socket_api::WakeUpPair> made = socket_api::makeWakeUpPair();
    if (!made)
        return false;
    wakeUp_ = std::move(*made);
    return true;
}

void Outbox::post(Message message)
{
    const MutexLock lock(mutex_);
    if (messages_.size() < capacity)
        messages_.push_back(std::move(message));
}

void Outbox::wakeWorker()
{
    const MutexLock lock(mutex_);
    // One byte is enough for any number of texts. A byte that could not be
    // sent must not stop the next caller from trying.
    if (!wakePending_)
        wakePending_ = socket_api::send(wakeUp_.sender.get(), "", 1) == 1;
    wakened_.notifyAll();
}

void Outbox::acknowledge()
{
    const MutexLock lock(mutex_);
    char bytes[16];
    while (socket_api::receive(wakeUp_.receiver.get(), bytes, sizeof bytes) > 0) {
    }
    wakePending_ = false;
}

std::vector<Outbox::Message> Outbox::take()
{
    const MutexLock lock(mutex_);
    return std::exchange(messages_, {});
}

void Outbox::waitWithoutSockets(std::chrono::milliseconds limit)
{
    MutexLock lock(mutex_);
    wakened_.waitFor(lock, limit, [this]() REQUIRES(mutex_) { return wakePending_; });
}
