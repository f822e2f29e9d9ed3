#include "pc/usb_messages.h"

#include "base/console.h"
#include "base/threads.h"
#include "simpc/sim_pc.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

// The PC tells of a device on whichever thread notices it; the messages' own
// thread takes it from there, like the window that Windows sends messages to.
struct UsbMessages::Private
{
    void post(const QString &interfacePath)
    {
        {
            const std::lock_guard<std::mutex> lock(mutex);
            paths.push_back(interfacePath);
        }
        wakeUp.notify_one();
    }

    void run()
    {
        std::unique_lock<std::mutex> lock(mutex);
        while (!exiting) {
            if (paths.empty()) {
                wakeUp.wait(lock);
                continue;
            }
            const QString path = paths.front();
            paths.pop_front();
            lock.unlock();
            changed(path);
            lock.lock();
        }
        console::echo("worker receive the exiting Message...");
    }

    Changed changed;
    std::mutex mutex; // guards the next two
    std::deque<QString> paths;
    bool exiting = false;
    std::condition_variable wakeUp;
    std::thread thread;
};

UsbMessages::UsbMessages(Changed changed) : d(std::make_unique<Private>())
{
    d->changed = std::move(changed);
    d->thread = threads::begin("messages about USB devices", [this] { d->run(); });
    if (d->thread.joinable())
        SimPc::current().usb.onInterfaceChange([this](const QString &path) { d->post(path); });
}

UsbMessages::~UsbMessages()
{
    stop();
}

bool UsbMessages::stop()
{
    if (!d->thread.joinable())
        return false;
    SimPc::current().usb.onInterfaceChange({});
    {
        const std::lock_guard<std::mutex> lock(d->mutex);
        d->exiting = true;
    }
    d->wakeUp.notify_one();
    d->thread.join();
    return true;
}
