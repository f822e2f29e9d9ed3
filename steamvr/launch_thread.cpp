#include "steamvr/launch_thread.h"

#include "base/threads.h"

#include <QCoreApplication>
#include <QThread>

#include <atomic>
#include <utility>

namespace launch_thread {

namespace {

std::thread &thread()
{
    static std::thread &one = *new std::thread; // joined at the application's end
    return one;
}

std::atomic<bool> toEnd{false};

void join()
{
    if (thread().joinable())
        thread().join();
}

} // namespace

void end()
{
    toEnd = true;
    join();
}

bool isToEnd()
{
    return toEnd;
}

// Qt's pool would lose what it finds no thread for, and wait for it at the end.
bool run(std::function<void()> work)
{
    static const bool isJoinedAtTheEnd = (qAddPostRoutine(end), true);
    Q_UNUSED(isJoinedAtTheEnd)
    join();
    toEnd = false;
    thread() = threads::begin("the launch of Steam", [work = std::move(work)] {
        QThread::currentThread()->setObjectName(QStringLiteral("SteamLaunch"));
        work();
    });
    return thread().joinable();
}

} // namespace launch_thread
