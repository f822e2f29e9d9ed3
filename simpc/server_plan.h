// What a scenario says about the streaming server.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// A headset on the simulated network. Times in milliseconds from the first
// start of the streaming server; below 0: never.
struct PlannedHeadset
{
    QString serial;
    QString address;
    int joins = 0;
    int drops = -1;
    int returns = -1; // after `drops`
};

struct ServerPlan
{
    enum Kind {
        Program,  // the program streaming-server-sim is started
        External, // somebody else plays the server on the control port
        Never     // SteamVR comes up without it
    };

    Kind kind = Program;
    std::vector<PlannedHeadset> headsets;
    int linkDelay = 500; // ms from a request to link until the headset is connected
    int restart = -1;    // ms from the first start until it wants SteamVR restarted
    bool usb = false;    // a headset is on the cable
    int usbPort = 0;     // one is, if it is reached through this port of the PC; 0: as above
    bool hello = false;  // greets on connecting
    bool deviceIdFirst = false;
    QString deviceId; // reported instead of the connected headset's serial
    int split = 0;    // sends in pieces of so many bytes; 0: whole
    int join = 1;     // sends so many replies at once

    // The command line for a start `elapsed` milliseconds after the first one.
    // The program counts from its own start, the plan from the first: what lies
    // in the past does not happen a second time.
    QStringList arguments(qint64 elapsed) const;
};
