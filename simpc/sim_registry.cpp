#include "simpc/sim_registry.h"

#include "simpc/sim_timeline.h"

#include <algorithm>

void SimRegistry::setText(const QString &key, const QString &name, const QString &value)
{
    const MutexLock lock(mutex_);
    values_[key][name] = value;
}

void SimRegistry::addKey(const QString &key)
{
    const MutexLock lock(mutex_);
    values_[key];
}

void SimRegistry::removeKey(const QString &key)
{
    const MutexLock lock(mutex_);
    for (auto it = values_.begin(); it != values_.end();) {
        if (it.key() == key || it.key().startsWith(key + '\\'))
            it = values_.erase(it);
        else
            ++it;
    }
}

bool SimRegistry::keyExists(const QString &key) const
{
    timeline_.settle();
    const MutexLock lock(mutex_);
    return std::any_of(values_.keyBegin(), values_.keyEnd(), [&](const QString &existing) {
        return existing == key || existing.startsWith(key + '\\');
    });
}

std::optional<QString> SimRegistry::text(const QString &key, const QString &name) const
{
    timeline_.settle();
    const MutexLock lock(mutex_);
    const auto values = values_.constFind(key);
    if (values == values_.constEnd() || !values->contains(name))
        return std::nullopt;
    return values->value(name);
}

QStringList SimRegistry::subkeys(const QString &key) const
{
    timeline_.settle();
    const MutexLock lock(mutex_);
    QStringList names;
    const QString prefix = key + '\\';
    for (auto it = values_.keyBegin(); it != values_.keyEnd(); ++it) {
        if (!it->startsWith(prefix))
            continue;
        const QString name = it->mid(prefix.size()).section('\\', 0, 0);
        if (!names.contains(name))
            names.append(name);
    }
    return names;
}
