#include "link/usb_watcher.h"

#include "link/usb_identity.h"
#include "simpc/sim_pc.h"

#include <condition_variable>
#include <deque>
#include <iostream>
#include <mutex>
#include <thread>

// The PC tells of a device on whichever thread notices it; the watcher's own
// thread takes it from there, like the window that Windows sends messages to.
struct UsbWatcher::Private
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
            if (usb_identity::isHeadset(path))
                changed();
            lock.lock();
        }
        std::cout << "worker receive the exiting Message..." << std::endl;
    }

    std::function<void()> changed;
    std::mutex mutex; // guards the next two
    std::deque<QString> paths;
    bool exiting = false;
    std::condition_variable wakeUp;
    std::thread thread;
};

UsbWatcher::UsbWatcher(std::function<void()> changed) : d(std::make_unique<Private>())
{
    d->changed = std::move(changed);
    SimPc::current().onUsbChange([this](const QString &path) { d->post(path); });
    d->thread = std::thread([this] { d->run(); });
}

UsbWatcher::~UsbWatcher()
{
    stop();
}

bool UsbWatcher::stop()
{
    if (!d->thread.joinable())
        return false;
    SimPc::current().onUsbChange({});
    {
        const std::lock_guard<std::mutex> lock(d->mutex);
        d->exiting = true;
    }
    d->wakeUp.notify_one();
    d->thread.join();
    return true;
}
