// How Steam and SteamVR behave on a simulated PC: what their installers left in
// the registry, what comes up after a launch and when, what a shutdown takes
// away.
#pragma once

#include "simpc/sim_pc.h"

#include <QString>

#include <functional>

// All times in milliseconds.
struct SteamOptions
{
    bool steamInstalled = true;
    QString steamPath = QStringLiteral("C:\\Program Files (x86)\\Steam");
    // Whether Windows lists Steam among the installed programs.
    bool steamListed = true;
    bool steamRunning = false; // at the beginning
    // From the launch of steam.exe until it is seen among the processes.
    int steamAppears = 5000;
    // From the launch until the launched program itself ends; below 0: never,
    // whoever waits for it waits in vain.
    int launcherEnds = 1000;

    bool steamVrInstalled = true;
    QString steamVrPath =
        QStringLiteral("C:\\Program Files (x86)\\Steam\\steamapps\\common\\SteamVR");
    bool steamVrRunning = false; // left over from an earlier run
    // From Steam's URL of SteamVR until its first process.
    int steamVrAppears = 3000;
    // Between one process of SteamVR and the next, coming up.
    int steamVrGap = 200;
    // From SteamVR's server until the streaming server that it loads.
    int driverLoads = 1000;
    // From vrstartup.exe -shutdown until the first process goes, and between
    // one and the next.
    int steamVrCloses = 1500;
    int closingGap = 250;

    // The user's home, for OpenVR's paths file; empty: QDir::homePath().
    QString homeDir;
    // SteamVR loads the streaming driver when this folder is among
    // "external_drivers"; empty: when there is any entry.
    QString driverFolder;

    // Whether this PC itself sets its cell to 1 when the driver has loaded; off
    // when the streaming server does it.
    bool setsCell = true;
    // The streaming server comes with the driver and goes with SteamVR's
    // server. Called within a change (see SimPc), in turns, start first.
    std::function<void()> startServer;
    std::function<void()> stopServer;
};

// Gives `pc` Steam and SteamVR, once. Starts and shutdowns may follow each
// other any number of times. `pc` keeps the callbacks as long as it lives.
void installSteam(SimPc &pc, const SteamOptions &options);
