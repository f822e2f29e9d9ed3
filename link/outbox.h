// Texts on their way to the link's worker thread, and what wakes it.
#pragma once

#include "base/mutex.h"
#include "pc/socket_api.h"

#include <QtGlobal>

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

class Outbox
{
public:
    struct Message
    {
        quint64 client; // the one it is meant for, never a later one
        std::string text;
    };

    // So many texts wait at most. Nobody asks for that many unless the worker
    // is stuck.
    static constexpr std::size_t capacity = 1000;

    Outbox() = default;

    Outbox(const Outbox &) = delete;
    Outbox &operator=(const Outbox &) = delete;

    // Makes the wake-up sockets; false when the system refuses, with the reason
    // in socket_api::lastError(). Before everything else.
    [[nodiscard]] bool open();
    // Readable while the worker is to look here. Owned by this object.
    socket_api::Handle wakeUpHandle() const { return wakeUp_.receiver.get(); }

    // Puts a text at the end of the queue; lost when the queue is full. Any
    // thread.
    void post(Message message);
    // Makes the wake-up handle readable. Any thread.
    void wakeWorker();

    // For the worker: makes the handle unreadable again, takes everything that
    // was posted, oldest first. What is posted after the first wakes it anew.
    void acknowledge();
    std::vector<Message> take();
    // Sleeps without the help of any socket, until wakeWorker() or the limit.
    void waitWithoutSockets(std::chrono::milliseconds limit);

private:
    socket_api::WakeUpPair wakeUp_; // as open() left it
    Mutex mutex_;
    Condition wakened_;
    std::vector<Message> messages_ GUARDED_BY(mutex_);
    bool wakePending_ GUARDED_BY(mutex_) = false;
};
