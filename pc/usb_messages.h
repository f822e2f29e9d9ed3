// The system's messages about devices that come to this PC and leave it.
#pragma once

#include <QString>

#include <functional>
#include <memory>

// A thread of its own from the constructor to stop(). One at a time, and on
// Windows one in the life of a process: what the thread registers with the
// system is never taken back. Where the system has no thread to give, nobody is
// called; threads::missing() tells.
class UsbMessages
{
public:
    // `changed` is called on the messages' thread with the path of the device
    // interface, alike for one that arrived and one that is gone.
    using Changed = std::function<void(const QString &interfacePath)>;

    explicit UsbMessages(Changed changed);
    ~UsbMessages(); // as stop()

    UsbMessages(const UsbMessages &) = delete;
    UsbMessages &operator=(const UsbMessages &) = delete;

    // Ends the thread and waits for it, without a time limit. Returns false,
    // and does nothing, when there is no thread: none could be made, or it was
    // stopped before.
    bool stop();

private:
    struct Private;
    std::unique_ptr<Private> d;
};
