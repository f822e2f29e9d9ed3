// The registry of a simulated PC.
#pragma once

#include "base/mutex.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>

class SimTimeline;

// Keys are written with their root and backslashes; letter case counts. Any
// thread.
class SimRegistry
{
public:
    explicit SimRegistry(const SimTimeline &timeline) : timeline_(timeline) {}

    SimRegistry(const SimRegistry &) = delete;
    SimRegistry &operator=(const SimRegistry &) = delete;

    void setText(const QString &key, const QString &name, const QString &value);
    void addKey(const QString &key);
    void removeKey(const QString &key); // with everything below

    // As the functions of pc/registry.h.
    bool keyExists(const QString &key) const;
    std::optional<QString> text(const QString &key, const QString &name) const;
    QStringList subkeys(const QString &key) const;

private:
    const SimTimeline &timeline_;
    mutable Mutex mutex_;
    QMap<QString, QMap<QString, QString>> values_ GUARDED_BY(mutex_);
};
