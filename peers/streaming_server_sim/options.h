// What the command line of streaming-server-sim says.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

// All times in milliseconds from the start of the program, before the speed is
// applied; below 0: never.
struct HeadsetOption
{
    QString serial;
    QString address;
    int joins = 0;
    std::vector<int> drops;
    std::vector<int> returns;
};

struct Options
{
    quint16 port = 9932;
    QString cell; // empty: leave the cell alone
    std::vector<HeadsetOption> headsets;
    int linkDelay = 500;
    int restartAt = -1;
    bool hello = false;
    bool usb = false;
    int usbPort = 0; // of this PC, leads to the headset; 0: `usb` decides
    bool serialFirst = false;
    QString deviceId;
    int split = 0; // bytes a piece; 0: whole
    int join = 1;  // replies a packet
    double speed = 1;
    QString log;
    bool exitAfterDisconnect = false;
    int giveUp = 30000; // without a connection; 0: never

    // Reads the arguments, the program's name first. On a mistake `error` is a
    // sentence; when help was asked for, `help` is the text.
    static Options parse(const QStringList &arguments, QString *error, QString *help);

    // A delay as the real clock has to wait it.
    int real(int milliseconds) const;
};
