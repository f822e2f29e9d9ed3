// A program of Steam or SteamVR that Windows did not start.
#pragma once

#include "pc/shell_launch.h"

#include <QString>

struct LaunchFailure
{
    QString file;       // its full path
    unsigned error = 0; // the system's number
    QString reason;     // the system's words for it, in its language; may be empty

    // Whether it is not there at all: the registry keeps the folders of what was
    // moved or removed by hand.
    bool isMissing() const { return shell_launch::isNoSuchFile(error); }
};
