// Calls into another thread that the thread sanitizer can follow.
#pragma once

#include <QObject>

#include <functional>

// There for the sanitizer's sake alone: QMetaObject::invokeMethod() does the
// same. But the system's Qt is not instrumented, so that the sanitizer does not
// see what Qt guarantees, that a queued call runs after everything that its
// poster did before, and takes the two for a race. Here that order goes through
// a mutex of the standard library as well, which is not held while calling.
class SanitizerVisibleCall
{
public:
    // Queues `action` for the thread of `receiver`; it is dropped when
    // `receiver` is destroyed before. Any thread.
    static void post(QObject *receiver, std::function<void()> action);

    // The same, and waits until `action` has run or was dropped. Not on the
    // thread of `receiver`, which must have an event loop.
    static void postAndWait(QObject *receiver, const std::function<void()> &action);
};
