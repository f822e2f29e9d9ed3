// How far the connection has come, line by line as it happens.
#pragma once

#include "base/mutex.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <string>

class Clock;

// Any thread.
class ProgressPrinter
{
public:
    // Prints one line; is called under a lock, on the thread that says it.
    using Print = std::function<void(const std::string &line)>;

    // `clock` outlives this object.
    ProgressPrinter(Clock &clock, Print print);

    // Prints `line` with the time since begin(). Before that it is kept:
    // things begin before the window is there.
    void say(const QString &line);
    // The run begins: what was kept is printed. Once.
    void begin();

private:
    void print(const QString &line) const REQUIRES(mutex_);

    Clock &clock_;
    const Print print_;
    Mutex mutex_;
    bool begun_ GUARDED_BY(mutex_) = false;
    qint64 start_ GUARDED_BY(mutex_) = 0;
    QStringList kept_ GUARDED_BY(mutex_);
};
