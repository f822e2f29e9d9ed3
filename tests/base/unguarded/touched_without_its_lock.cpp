// What clang has to refuse: without LOCKED a guarded member is touched by whoever
// comes along.
#include "base/mutex.h"

class Counter
{
public:
    void count()
    {
#ifdef LOCKED
        const MutexLock lock(mutex_);
#endif
        ++value_;
    }

private:
    Mutex mutex_;
    int value_ GUARDED_BY(mutex_) = 0;
};

int main()
{
    Counter().count();
}
