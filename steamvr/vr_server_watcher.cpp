#include "steamvr/vr_server_watcher.h"

#include "link/shared_cell.h"

#include <QThread>

namespace {

constexpr int lookInterval = 50; // ms
constexpr quint32 serverIsUp = 1;

// A thread that ends when its owner does.
class WatcherThread : public QThread
{
public:
    explicit WatcherThread(QObject *owner) : QThread(owner) {}
    ~WatcherThread() override
    {
        quit();
        wait();
    }
};

} // namespace

VrServerWatcher::VrServerWatcher(Clock &clock, const SharedCell &cell,
                                 std::function<void()> serverUp)
    : clock_(clock), cell_(cell), serverUp_(std::move(serverUp))
{
}

void VrServerWatcher::start(QObject *owner, Clock &clock, const SharedCell &cell,
                            std::function<void()> serverUp)
{
    auto *thread = new WatcherThread(owner);
    thread->setObjectName(QStringLiteral("VrServerWatcher"));
    auto *watcher = new VrServerWatcher(clock, cell, std::move(serverUp));
    watcher->moveToThread(thread);
    connect(thread, &QThread::finished, watcher, &QObject::deleteLater);
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
    // The first look counts from now, not from whenever the thread gets going.
    QMetaObject::invokeMethod(watcher, &VrServerWatcher::begin, Qt::BlockingQueuedConnection);
}

void VrServerWatcher::begin()
{
    timerId_ = clock_.startTimer(lookInterval, this);
}

void VrServerWatcher::timerEvent(QTimerEvent *)
{
    quint32 value = 0;
    if (!cell_.read(&value) || value != serverIsUp)
        return;
    clock_.killTimer(timerId_, this);
    serverUp_();
    thread()->quit();
}
