// The firewall rule that SteamVR's server needs.
#pragma once

#include <QString>

#include <functional>

class HeadsetLink;
class SteamManager;

namespace firewall_step {

// Looks whether the rule for the SteamVR in this folder exists and, if not,
// lets the streaming server register it; we never touch the firewall. Without
// a folder nothing is looked for. `link` is called only when it is needed.
// Blocks while the system is asked.
void run(const QString &steamVRPath, SteamManager &steam,
         const std::function<HeadsetLink &()> &link);

} // namespace firewall_step
