// Counts what threads have released. Unlike Qt's, a thread sanitizer sees what
// it orders.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

class Semaphore
{
public:
    void release()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        ++available_;
        changed_.notify_all();
    }

    // Takes one, waiting ten seconds for it at most.
    bool acquire()
    {
        std::unique_lock<std::mutex> lock(mutex_);
        if (!changed_.wait_for(lock, std::chrono::seconds(10), [this] { return available_ > 0; }))
            return false;
        --available_;
        return true;
    }

    int available() const
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return available_;
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    int available_ = 0;
};
