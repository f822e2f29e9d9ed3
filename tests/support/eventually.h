// Waiting for what another thread or process does and says to nobody.
#pragma once

#include <QDeadlineTimer>

#include <thread>

// Whether the condition becomes true within so many milliseconds. It is asked all the
// time: what is to happen next to it happens at once.
template <typename Condition>
bool eventually(Condition condition, int milliseconds = 10000)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        std::this_thread::yield();
    }
    return true;
}
