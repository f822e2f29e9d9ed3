// The keys of a scenario that say how Steam, SteamVR, the streaming server and
// adb behave.
#pragma once

#include "simpc/adb_world.h"
#include "simpc/key_table.h"
#include "simpc/server_plan.h"
#include "simpc/steam_world.h"

namespace scenario {

// The objects of these names; `steam` and `steamVR` both belong to the options.
const KeyTable<SteamOptions> &steamKeys();
const KeyTable<SteamOptions> &steamVrKeys();
const KeyTable<ServerPlan> &serverKeys();
const KeyTable<PlannedHeadset> &headsetKeys(); // of the server
const KeyTable<AdbPlan> &adbKeys();

// `streamingServer` and `adb`, which may be words as well.
ServerPlan readServer(ObjectReader &root, const QString &key);
AdbPlan readAdb(ObjectReader &root, const QString &key);

} // namespace scenario
