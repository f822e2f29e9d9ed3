// A place on the way of a thread.
#pragma once

#include <condition_variable>
#include <mutex>

// Where a thread stands still until it is let go on.
class Gate
{
public:
    void open()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        open_ = true;
        changed_.notify_all();
    }
    void pass()
    {
        std::unique_lock<std::mutex> lock(mutex_);
        reached_ = true;
        changed_.notify_all();
        changed_.wait(lock, [this] { return open_; });
    }
    void waitUntilReached()
    {
        std::unique_lock<std::mutex> lock(mutex_);
        changed_.wait(lock, [this] { return reached_; });
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    bool open_ = false;
    bool reached_ = false;
};
