// A mutex whose use clang checks when it compiles: what a member is guarded by
// is written behind it, and touching it without the lock is an error there
// (-Wthread-safety). Other compilers see an ordinary mutex.
//
//     Mutex mutex_;
//     QStringList lines_ GUARDED_BY(mutex_);
//     void flush() REQUIRES(mutex_);
//
// A lock that keeps apart what is done rather than what is kept has nothing to
// be written behind; the comment on it begins with "Held while".
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

#ifdef __clang__
#define KOLM_THREAD_SAFETY(attribute) __attribute__((attribute))
#else
#define KOLM_THREAD_SAFETY(attribute)
#endif

// Behind a member: touched only while the mutex is held. The second one means
// what the member points to.
#define GUARDED_BY(mutex) KOLM_THREAD_SAFETY(guarded_by(mutex))
#define PT_GUARDED_BY(mutex) KOLM_THREAD_SAFETY(pt_guarded_by(mutex))

// Behind the parameters of a function: who calls it holds the mutex; holds it
// not, since the function takes it; holds it afterwards; holds it no more.
#define REQUIRES(...) KOLM_THREAD_SAFETY(requires_capability(__VA_ARGS__))
#define EXCLUDES(...) KOLM_THREAD_SAFETY(locks_excluded(__VA_ARGS__))
#define ACQUIRE(...) KOLM_THREAD_SAFETY(acquire_capability(__VA_ARGS__))
#define TRY_ACQUIRE(...) KOLM_THREAD_SAFETY(try_acquire_capability(__VA_ARGS__))
#define RELEASE(...) KOLM_THREAD_SAFETY(release_capability(__VA_ARGS__))
// The function gives this mutex back.
#define RETURN_CAPABILITY(mutex) KOLM_THREAD_SAFETY(lock_returned(mutex))

// Behind `class`: what can be held, and what holds it as long as it lives.
#define CAPABILITY KOLM_THREAD_SAFETY(capability("mutex"))
#define SCOPED_CAPABILITY KOLM_THREAD_SAFETY(scoped_lockable)

class CAPABILITY Mutex
{
public:
    Mutex() = default;

    Mutex(const Mutex &) = delete;
    Mutex &operator=(const Mutex &) = delete;

    void lock() ACQUIRE() { mutex_.lock(); }
    // Whether it could be had at once; then it is held.
    [[nodiscard]] bool tryLock() TRY_ACQUIRE(true) { return mutex_.try_lock(); }
    void unlock() RELEASE() { mutex_.unlock(); }

private:
    friend class MutexLock;
    std::mutex mutex_;
};

// Holds a mutex as long as it lives, but for the time between unlock() and
// lock().
class SCOPED_CAPABILITY MutexLock
{
public:
    explicit MutexLock(Mutex &mutex) ACQUIRE(mutex) : lock_(mutex.mutex_) {}
    ~MutexLock() RELEASE() = default;

    MutexLock(const MutexLock &) = delete;
    MutexLock &operator=(const MutexLock &) = delete;

    void lock() ACQUIRE() { lock_.lock(); }
    void unlock() RELEASE() { lock_.unlock(); }

private:
    friend class Condition;
    std::unique_lock<std::mutex> lock_;
};

// What a thread waits for that holds a lock, which others have meanwhile. A
// wait may end for no reason: ask again what it is for.
class Condition
{
public:
    void wait(MutexLock &lock) { condition_.wait(lock.lock_); }
    // Waits until `isSo` or for so long; what `isSo` says then. It is called
    // with the lock held, which stands behind its parameters:
    //     [this]() REQUIRES(mutex_) { return done_; }
    template <typename Predicate>
    bool waitFor(MutexLock &lock, std::chrono::milliseconds limit, Predicate isSo)
    {
        return condition_.wait_for(lock.lock_, limit, std::move(isSo));
    }

    void notifyOne() { condition_.notify_one(); }
    void notifyAll() { condition_.notify_all(); }

private:
    std::condition_variable condition_;
};
