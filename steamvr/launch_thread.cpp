#include "steamvr/launch_thread.h"

#include "base/threads.h"

#include <QCoreApplication>

#include <utility>

namespace launch_thread {

namespace {

std::thread &thread()
{
    static std::thread &one = *new std::thread; // joined at the application's end
    return one;
}

void join()
{
    if (thread().joinable())
        thread().join();
}

} // namespace

// Qt's pool would lose what it finds no thread for, and wait for it at the end.
bool run(std::function<void()> work)
{
    static const bool isJoinedAtTheEnd = (qAddPostRoutine(join), true);
    Q_UNUSED(isJoinedAtTheEnd)
    join();
    thread() = threads::begin("the launch of Steam", std::move(work));
    return thread().joinable();
}

} // namespace launch_thread
