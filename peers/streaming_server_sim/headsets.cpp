#include "peers/streaming_server_sim/headsets.h"

#include <QStringList>

#include <algorithm>

void Headsets::announce(const QString &serial, const QString &address)
{
    headsets_.push_back({serial, address, false, false, 0});
}

Headset *Headsets::find(const QString &serial)
{
    const auto found = std::find_if(headsets_.begin(), headsets_.end(),
                                    [&](const Headset &h) { return h.serial == serial; });
    return found == headsets_.end() ? nullptr : &*found;
}

void Headsets::join(const QString &serial)
{
    if (Headset *headset = find(serial)) {
        headset->present = true;
        headset->connected = false;
        ++headset->attempt;
    }
}

void Headsets::drop(const QString &serial)
{
    if (Headset *headset = find(serial)) {
        headset->present = false;
        ++headset->attempt;
    }
}

Headset *Headsets::findPresent(const QString &serial, const QString &address)
{
    Headset *headset = find(serial);
    return headset && headset->present && headset->address == address ? headset : nullptr;
}

int Headsets::beginLink(const QString &serial, const QString &address)
{
    Headset *headset = findPresent(serial, address);
    return headset ? ++headset->attempt : -1;
}

bool Headsets::finishLink(const QString &serial, int attempt)
{
    Headset *headset = find(serial);
    if (!headset || headset->attempt != attempt)
        return false;
    headset->connected = true;
    return true;
}

bool Headsets::unlink(const QString &serial, const QString &address)
{
    Headset *headset = findPresent(serial, address);
    if (!headset)
        return false;
    headset->connected = false;
    ++headset->attempt;
    return true;
}

QString Headsets::report(const QString &deviceId, bool deviceIdFirst) const
{
    QStringList items;
    QString current = deviceId;
    for (const Headset &headset : headsets_) {
        if (!headset.present)
            continue;
        items.append(
            QStringLiteral("%1;%2;%3;100")
                .arg(headset.serial, headset.address,
                     headset.connected ? QStringLiteral("true") : QStringLiteral("false")));
        if (current.isEmpty() && headset.connected)
            current = headset.serial;
    }
    if (!current.isEmpty())
        items.insert(deviceIdFirst ? 0 : items.size(), QStringLiteral("deviceId:") + current);
    return items.join('~');
}
