#include "checks/fact_gatherer.h"

#include "base/mutex.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <deque>
#include <thread>
#include <utility>
#include <vector>

using checks::Question;

// Everything passes through mutexes of the standard library: the thread
// sanitizer cannot see into the system's Qt and would take Qt's own queues for
// mistakes.
struct FactGatherer::Shared
{
    struct Job
    {
        const Question *question;
        Facts known;
    };

    std::thread thread; // the owner's

    Mutex mutex;
    Condition changed;
    FactGatherer *receiver GUARDED_BY(mutex) = nullptr; // none any more when it ends
    std::deque<Job> jobs GUARDED_BY(mutex);             // the first is being asked
    std::vector<Question::Answer> answers GUARDED_BY(mutex);
    bool over GUARDED_BY(mutex) = false; // the thread has nothing more to do
};

FactGatherer::FactGatherer(std::chrono::milliseconds patience, QObject *parent)
    : QObject(parent), patience_(patience), shared_(std::make_shared<Shared>())
{
    shared_->receiver = this;
}

FactGatherer::~FactGatherer()
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

void FactGatherer::ask(const Question &question, const Facts &known)
{
    const MutexLock lock(shared_->mutex);
    const bool isPut = std::any_of(shared_->jobs.begin(), shared_->jobs.end(),
                                   [&](const auto &job) { return job.question == &question; });
    if (isPut)
        return;
    shared_->jobs.push_back({&question, known});
    if (shared_->thread.joinable())
        shared_->changed.notifyAll();
    else
        shared_->thread = std::thread(&FactGatherer::work, shared_);
}

bool FactGatherer::isBusy() const
{
    const MutexLock lock(shared_->mutex);
    return !shared_->jobs.empty() || !shared_->answers.empty();
}

// The thread's own; `shared` may be all that is left.
void FactGatherer::work(const std::shared_ptr<Shared> &shared)
{
    MutexLock lock(shared->mutex);
    for (;;) {
        while (shared->receiver && shared->jobs.empty())
            shared->changed.wait(lock);
        if (!shared->receiver)
            break;
        const Shared::Job job = shared->jobs.front();
        lock.unlock();
        Question::Answer answer = job.question->ask(job.known);
        lock.lock();
        shared->jobs.pop_front();
        shared->answers.push_back(std::move(answer));
        if (shared->receiver)
            QCoreApplication::postEvent(shared->receiver, new QEvent(QEvent::User));
    }
    shared->over = true;
    shared->changed.notifyAll();
}

void FactGatherer::customEvent(QEvent *)
{
    std::vector<Question::Answer> answers;
    {
        const MutexLock lock(shared_->mutex);
        answers.swap(shared_->answers);
    }
    for (const Question::Answer &answer : answers)
        emit answered(answer);
    emit toldAll();
}
