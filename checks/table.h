// All checks of the program.
#pragma once

#include "checks/check.h"

namespace checks {

// In one order for the whole run; a cause stands before what it explains.
const Table &table();

// Its parts, by what they are about.
Table steamChecks();    // Steam and SteamVR
Table hardwareChecks(); // system, processor, graphics card, its driver
Table networkChecks();  // network and ports
Table usbChecks();      // the cable and adb
Table powerAndSoundChecks();

} // namespace checks
