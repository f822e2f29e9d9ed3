// A thread with an event loop, which others hand their work to.
#pragma once

#include "base/clock.h"
#include "base/mutex.h"

#include <functional>
#include <thread>
#include <vector>

// Everything passes through mutexes of the standard library and the thread is
// one of its own as well: the thread sanitizer cannot see into the system's Qt
// and would take Qt's own ways of doing this for mistakes.
class HostThread
{
public:
    HostThread() = default;
    ~HostThread(); // as stop()

    HostThread(const HostThread &) = delete;
    HostThread &operator=(const HostThread &) = delete;

    // Needs the application object. `atEnd` runs on the thread, last of all.
    // Once.
    void start(std::function<void()> atEnd);
    // Waits until the thread has ended; what it has not got to by then is
    // dropped. Not on the thread itself.
    void stop();

    // Runs `task` on the thread as soon as possible, in the order of the calls;
    // what comes before start() waits for it. Nothing after stop(). Any thread.
    void post(std::function<void()> task);

    // Clock::singleShot() on the thread; nothing unless it runs. Any thread.
    void singleShot(Clock &clock, int milliseconds, std::function<void()> action);

private:
    class Receiver;

    std::thread thread_;
    Mutex mutex_;
    Receiver *receiver_ GUARDED_BY(mutex_) = nullptr; // while the thread runs
    bool ending_ GUARDED_BY(mutex_) = false;
    std::vector<std::function<void()>> tasks_ GUARDED_BY(mutex_);
};
