// Tells when a headset is plugged into this PC or out of it.
#pragma once

#include "pc/usb_messages.h"

#include <functional>

// A thread of its own from the constructor to stop(). One at a time, and on
// Windows one in the life of a process.
class UsbWatcher
{
public:
    // `changed` is called on the thread of the watcher, alike for a headset
    // that arrived and one that is gone.
    explicit UsbWatcher(const std::function<void()> &changed);

    // Ends the thread and waits for it, without a time limit, as the destructor
    // does. Returns false, and does nothing, when there is no thread: none could
    // be made, or it was stopped before.
    bool stop() { return messages_.stop(); }

private:
    UsbMessages messages_;
};
