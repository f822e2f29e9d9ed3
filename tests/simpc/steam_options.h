// How Steam is on the PC of a test.
#pragma once

#include "simpc/steam_world.h"

// Steam and SteamVR are installed, or neither.
inline SteamOptions steamThatIs(bool installed, bool running)
{
    SteamOptions options;
    options.steamInstalled = installed;
    options.steamVrInstalled = installed;
    options.steamRunning = running;
    return options;
}

inline SteamOptions steamRunning()
{
    return steamThatIs(true, true);
}
