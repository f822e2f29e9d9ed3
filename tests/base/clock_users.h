// Objects that use a clock.
#pragma once

#include <QCoreApplication>
#include <QObject>
#include <QThread>
#include <QTimerEvent>

#include <functional>
#include <future>
#include <mutex>
#include <utility>
#include <vector>

// A thread with an event loop and an object that lives on it. What goes from
// one thread to the other goes under locks that the thread sanitizer sees,
// which it does not in the system's Qt.
class Worker
{
public:
    Worker()
    {
        object_->moveToThread(&thread_);
        thread_.start();
    }
    ~Worker()
    {
        run([] {});
        thread_.quit();
        thread_.wait();
        delete object_;
    }

    QObject *object() { return object_; }
    QThread *thread() { return &thread_; }
    // Runs `action` there some time later.
    void post(std::function<void()> action) { object_->post(std::move(action)); }
    // Runs `action` there and waits for it.
    void run(const std::function<void()> &action)
    {
        std::promise<void> done;
        post([&] {
            action();
            done.set_value();
        });
        done.get_future().wait();
    }

private:
    class Receiver : public QObject
    {
    public:
        void post(std::function<void()> action)
        {
            {
                const std::lock_guard<std::mutex> lock(mutex_);
                actions_.push_back(std::move(action));
            }
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
        }

    protected:
        void customEvent(QEvent *) override
        {
            std::vector<std::function<void()>> actions;
            {
                const std::lock_guard<std::mutex> lock(mutex_);
                actions.swap(actions_);
            }
            for (const auto &action : actions)
                action();
        }

    private:
        std::mutex mutex_;
        std::vector<std::function<void()>> actions_;
    };

    QThread thread_;
    Receiver *object_ = new Receiver;
};

// Calls a function with the id of each timer that ticks for it.
class Ticker : public QObject
{
public:
    explicit Ticker(std::function<void(int)> onTick) : onTick_(std::move(onTick)) {}

protected:
    void timerEvent(QTimerEvent *event) override { onTick_(event->timerId()); }

private:
    std::function<void(int)> onTick_;
};
