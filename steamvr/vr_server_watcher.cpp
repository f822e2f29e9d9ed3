#include "steamvr/vr_server_watcher.h"

#include "base/threads.h"
#include "pc/shared_cell.h"

#include <QDebug>
#include <QThread>

#include <chrono>
#include <future>

using namespace std::chrono_literals;

namespace {

constexpr auto pollInterval = 50ms;
constexpr auto retryInterval = 500ms;
constexpr quint32 serverIsUp = 1;

// Keeps a watcher on its own stack and ends with its owner.
class WatcherThread : public QThread
{
public:
    WatcherThread(QObject *owner, std::function<void(WatcherThread &)> watch)
        : QThread(owner), watch_(std::move(watch))
    {
    }

    ~WatcherThread() override
    {
        if (!hasBegun_)
            return;
        requestInterruption();
        quit();
        wait();
        done_.get_future().wait();
    }

    // Returns when the watcher has had its timer: the first poll counts from
    // now, not from whenever the thread gets going. False when the system has no
    // thread to give.
    bool startAndWait()
    {
        if (threads::mayBegin())
            start();
        // It waits to be let go, so that it cannot have ended already.
        hasBegun_ = isRunning();
        if (!hasBegun_)
            return false;
        go_.set_value();
        ready_.get_future().wait();
        return true;
    }

    void watching() { ready_.set_value(); }
    int loop() { return exec(); }

protected:
    void run() override
    {
        go_.get_future().wait();
        watch_(*this);
        done_.set_value();
    }

private:
    const std::function<void(WatcherThread &)> watch_;
    bool hasBegun_ = false; // the owner's
    std::promise<void> go_;
    std::promise<void> ready_;
    std::promise<void> done_;
};

} // namespace

VrServerWatcher::VrServerWatcher(Clock &clock, const SharedCell *cell, Step serverUp)
    : clock_(clock), cell_(cell), serverUp_(std::move(serverUp))
{
}

void VrServerWatcher::start(QObject *owner, Clock &clock, const SharedCell &cell, Step serverUp)
{
    start(owner, clock, &cell, std::move(serverUp));
}

void VrServerWatcher::tryAgain(QObject *owner, Clock &clock, Step step)
{
    start(owner, clock, nullptr, std::move(step));
}

void VrServerWatcher::start(QObject *owner, Clock &clock, const SharedCell *cell, Step serverUp)
{
    auto *thread = new WatcherThread(owner, [&clock, cell, serverUp](WatcherThread &on) {
        VrServerWatcher watcher(clock, cell, serverUp);
        watcher.begin();
        on.watching();
        on.loop();
    });
    thread->setObjectName(QStringLiteral("VrServerWatcher"));
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    if (thread->startAndWait())
        return;
    delete thread;
    qWarning("[steam] no thread to watch SteamVR's server on, watched between other things");
    auto *watcher = new VrServerWatcher(clock, cell, std::move(serverUp));
    watcher->setParent(owner);
    watcher->begin();
}

void VrServerWatcher::begin()
{
    timerId_ = clock_.startTimer(cell_ ? pollInterval : retryInterval, this);
}

void VrServerWatcher::timerEvent(QTimerEvent *)
{
    // Whoever holds the cell must not hold up the end of the program.
    const auto goesOn = [] { return !QThread::currentThread()->isInterruptionRequested(); };
    if (cell_ && cell_->read(goesOn) != serverIsUp)
        return;
    clock_.killTimer(timerId_, this);
    if (serverUp_()) {
        end();
        return;
    }
    cell_ = nullptr;
    begin();
}

void VrServerWatcher::end()
{
    if (parent())
        deleteLater(); // it has no thread of its own
    else
        thread()->quit();
}
