// What is written down about a simulated PC, line by line.
#pragma once

#include "base/mutex.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class SimTimeline;

// Lines in the order in which they were added. Any thread.
class SimRecord
{
public:
    // A record that has a timeline lets everything happen that is due before it
    // is read.
    explicit SimRecord(const SimTimeline *timeline = nullptr) : timeline_(timeline) {}

    SimRecord(const SimRecord &) = delete;
    SimRecord &operator=(const SimRecord &) = delete;

    void add(const QString &line);
    QStringList lines() const;
    void clear();
    // Called with each new line, on the thread that added it; may be called for
    // several listeners, which stay as long as this record.
    void onLine(std::function<void(const QString &)> listener);

private:
    const SimTimeline *const timeline_;
    mutable Mutex mutex_; // never held while calling back
    QStringList lines_ GUARDED_BY(mutex_);
    std::vector<std::function<void(const QString &)>> listeners_ GUARDED_BY(mutex_);
};
