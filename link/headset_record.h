// One headset as the streaming server reports it.
#pragma once

#include <QList>
#include <QString>

struct HeadsetRecord
{
    QString serial;  // the headset's identity, shown as its name
    QString address; // its IP address
    bool connected = false;
};

inline bool operator==(const HeadsetRecord &a, const HeadsetRecord &b)
{
    return a.serial == b.serial && a.address == b.address && a.connected == b.connected;
}

using HeadsetList = QList<HeadsetRecord>;
