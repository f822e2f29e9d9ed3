// The registry of a simulated PC.
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <mutex>
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
    mutable std::mutex mutex_; // guards the values
    QMap<QString, QMap<QString, QString>> values_;
};
