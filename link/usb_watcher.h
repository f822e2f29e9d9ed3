// Tells when a headset is plugged into this PC or out of it.
#pragma once

#include <functional>
#include <memory>

// A thread of its own from the constructor to stop(). One at a time, and on
// Windows one in the life of a process: what the thread registers with the
// system is never taken back.
class UsbWatcher
{
public:
    // `changed` is called on the thread of the watcher, alike for a headset
    // that arrived and one that is gone.
    explicit UsbWatcher(std::function<void()> changed);
    ~UsbWatcher(); // as stop()

    UsbWatcher(const UsbWatcher &) = delete;
    UsbWatcher &operator=(const UsbWatcher &) = delete;

    // Ends the thread and waits for it, without a time limit. Returns false,
    // and does nothing, when there is no thread: none could be made, or it was
    // stopped before.
    bool stop();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
