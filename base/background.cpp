#include "base/background.h"

#include "base/mutex.h"
#include "base/threads.h"

#include <QCoreApplication>
#include <QEvent>

#include <deque>
#include <thread>
#include <utility>
#include <vector>

// Everything passes through mutexes of the standard library: the thread
// sanitizer cannot see into the system's Qt and would take Qt's own queues for
// mistakes.
struct Background::Shared
{
    std::thread thread; // the owner's

    Mutex mutex;
    Condition changed;
    Background *receiver GUARDED_BY(mutex) = nullptr; // none any more when it ends
    std::deque<Work> jobs GUARDED_BY(mutex);          // the first is being done
    std::vector<Result> results GUARDED_BY(mutex);
    bool over GUARDED_BY(mutex) = false; // the thread has nothing more to do
};

Background::Background(const char *purpose, std::chrono::milliseconds patience, QObject *parent)
    : QObject(parent), purpose_(purpose), patience_(patience), shared_(std::make_shared<Shared>())
{
    const MutexLock lock(shared_->mutex);
    shared_->receiver = this;
}

Background::~Background()
{
    if (!shared_->thread.joinable())
        return;
    bool over = false;
    {
        MutexLock lock(shared_->mutex);
        shared_->receiver = nullptr;
        shared_->changed.notifyAll();
        // The limit is for Windows, which may never answer.
        over = shared_->changed.waitFor(
            lock, patience_, [this]() REQUIRES(shared_->mutex) { return shared_->over; });
    }
    if (over)
        shared_->thread.join();
    else
        shared_->thread.detach();
}

bool Background::run(Work work)
{
    if (!shared_->thread.joinable())
        shared_->thread =
            threads::begin(purpose_, [shared = shared_] { Background::work(shared); });
    if (!shared_->thread.joinable())
        return false;
    const MutexLock lock(shared_->mutex);
    shared_->jobs.push_back(std::move(work));
    shared_->changed.notifyAll();
    return true;
}

bool Background::isBusy() const
{
    const MutexLock lock(shared_->mutex);
    return !shared_->jobs.empty() || !shared_->results.empty();
}

// The thread's own; `shared` may be all that is left.
void Background::work(const std::shared_ptr<Shared> &shared)
{
    MutexLock lock(shared->mutex);
    for (;;) {
        while (shared->receiver && shared->jobs.empty())
            shared->changed.wait(lock);
        if (!shared->receiver)
            break;
        const Work job = shared->jobs.front();
        lock.unlock();
        Result result = job();
        lock.lock();
        shared->jobs.pop_front();
        shared->results.push_back(std::move(result));
        if (shared->receiver)
            QCoreApplication::postEvent(shared->receiver, new QEvent(QEvent::User));
    }
    shared->over = true;
    shared->changed.notifyAll();
}

void Background::customEvent(QEvent *)
{
    std::vector<Result> results;
    {
        const MutexLock lock(shared_->mutex);
        results.swap(shared_->results);
    }
    for (const Result &result : results) {
        if (result)
            result();
    }
    emit resultsTaken();
}
