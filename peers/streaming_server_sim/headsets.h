// The headsets on the network, as the streaming server sees them.
#pragma once

#include <QString>

#include <vector>

struct Headset
{
    QString serial;
    QString address;
    bool present = false;
    bool connected = false;
    int attempt = 0; // changes whenever a link under way has lost its point
};

// Only what is present is known to the server: it can be linked and is listed,
// in the order of the headsets' announcement.
class Headsets
{
public:
    void announce(const QString &serial, const QString &address);

    // The headset comes, unconnected, or goes.
    void join(const QString &serial);
    void drop(const QString &serial);

    // Begins to link; the number is for finishLink(). Below 0 for a headset
    // that is not present at that address.
    int beginLink(const QString &serial, const QString &address);
    // The headset is connected, unless it was dropped, unlinked or linked anew
    // since beginLink(): then false.
    bool finishLink(const QString &serial, int attempt);
    // False for a headset that is not present at that address.
    bool unlink(const QString &serial, const QString &address);

    // The argument of HMDINFOBACK: "serial;address;connected;battery" items and
    // a "deviceId:" item, joined by "~". The latter names `deviceId` or else
    // the first connected headset, and is left out when there is neither.
    QString report(const QString &deviceId, bool deviceIdFirst) const;

private:
    Headset *find(const QString &serial);
    Headset *findPresent(const QString &serial, const QString &address);

    std::vector<Headset> headsets_;
};
