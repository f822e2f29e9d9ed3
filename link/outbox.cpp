#include "link/outbox.h"

#include <utility>

Outbox::~Outbox()
{
    if (sender_ == socket_api::invalidHandle)
        return;
    socket_api::close(sender_);
    socket_api::close(receiver_);
}

bool Outbox::open()
{
    if (sender_ != socket_api::invalidHandle)
        return true;
    socket_api::initialise();
    return socket_api::makeWakeUpPair(&sender_, &receiver_);
}

void Outbox::post(Message message)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (messages_.size() < capacity)
        messages_.push_back(std::move(message));
}

void Outbox::wakeWorker()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    // One byte is enough for any number of texts. A byte that could not be
    // sent must not stop the next caller from trying.
    if (!wakePending_)
        wakePending_ = socket_api::send(sender_, "", 1) == 1;
    wakened_.notify_all();
}

void Outbox::acknowledge()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    char bytes[16];
    while (socket_api::receive(receiver_, bytes, sizeof bytes) > 0) {
    }
    wakePending_ = false;
}

std::vector<Outbox::Message> Outbox::take()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return std::exchange(messages_, {});
}

void Outbox::waitWithoutSockets(std::chrono::milliseconds limit)
{
    std::unique_lock<std::mutex> lock(mutex_);
    wakened_.wait_for(lock, limit, [this] { return wakePending_; });
}
