#include "simpc/host_thread.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>

#include <future>
#include <utility>

class HostThread::Receiver final : public QObject
{
public:
    explicit Receiver(HostThread &host) : host_(host) {}

    // Whoever calls holds the lock.
    void wake() { QCoreApplication::postEvent(this, new QEvent(QEvent::User)); }

    void run() { loop_.exec(); }

    // Any thread, also when the application object is gone and no event is
    // delivered any more.
    void quit() { loop_.quit(); }

protected:
    void customEvent(QEvent *) override
    {
        std::vector<std::function<void()>> tasks;
        {
            const MutexLock lock(host_.mutex_);
            tasks.swap(host_.tasks_);
            // A quit() that came before the loop ran was in vain.
            if (host_.ending_)
                loop_.quit();
        }
        for (const auto &task : tasks)
            task();
    }

private:
    HostThread &host_;
    QEventLoop loop_;
};

HostThread::~HostThread()
{
    stop();
}

void HostThread::start(std::function<void()> atEnd)
{
    std::promise<void> ready;
    thread_ = std::thread([this, &ready, atEnd = std::move(atEnd)] {
        Receiver receiver(*this);
        {
            const MutexLock lock(mutex_);
            receiver_ = &receiver;
            receiver.wake();
        }
        ready.set_value();
        receiver.run();
        {
            // Whoever ended the loop is done with the receiver.
            const MutexLock lock(mutex_);
        }
        atEnd();
    });
    ready.get_future().wait();
}

void HostThread::stop()
{
    {
        const MutexLock lock(mutex_);
        ending_ = true;
        tasks_.clear();
        if (receiver_) {
            receiver_->wake();
            receiver_->quit();
        }
        receiver_ = nullptr;
    }
    if (thread_.joinable())
        thread_.join();
}

void HostThread::post(std::function<void()> task)
{
    const MutexLock lock(mutex_);
    if (ending_)
        return;
    tasks_.push_back(std::move(task));
    if (receiver_)
        receiver_->wake();
}

void HostThread::singleShot(Clock &clock, int milliseconds, std::function<void()> action)
{
    const MutexLock lock(mutex_);
    if (receiver_)
        clock.singleShot(std::chrono::milliseconds(milliseconds), receiver_, std::move(action));
}
