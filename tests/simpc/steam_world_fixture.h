// A PC with Steam and SteamVR on it, and what becomes of them.
#pragma once

#include "base/manual_clock.h"
#include "simpc/sim_pc.h"
#include "simpc/steam_world.h"
#include "tests/support/vr_path_file.h"

#include <QTest>

inline const QString steamProgram = QStringLiteral("C:\\Program Files (x86)\\Steam\\steam.exe");
inline const QString vrStartup = QStringLiteral(
    "C:\\Program Files (x86)\\Steam\\steamapps\\common\\SteamVR\\bin\\win64\\vrstartup.exe");
inline const QString url = QStringLiteral("steam://rungameid/250820");
inline const QStringList allOfSteamVr{"vrmonitor.exe", "vrserver.exe", "vrcompositor.exe",
                                      "vrwebhelper.exe", "vrdashboard.exe"};

// One PC, its Steam and what became of the streaming server.
struct SteamWorldFixture
{
    explicit SteamWorldFixture(const QString &homeDir)
    {
        options.homeDir = homeDir;
        options.startServer = [this] { calls.append("start"); };
        options.stopServer = [this] { calls.append("stop"); };
    }

    // What happened to the streaming server up to now.
    QStringList server()
    {
        pc.timeline.settle();
        return calls;
    }
    void install() { installSteam(pc, options); }
    // Steam runs and a driver is registered.
    void installReady()
    {
        options.steamRunning = true;
        registerDrivers({"C:\\Assistant"});
        install();
    }
    void registerDrivers(const QStringList &folders)
    {
        vr_path_file::writeDrivers(options.homeDir, folders);
    }
    void writePaths(const QByteArray &text) { vr_path_file::write(options.homeDir, text); }
    SimLaunchResult openUrl(const QString &which = url)
    {
        return pc.launches.start({"explorer", which, false});
    }
    SimLaunchResult shutDown() { return pc.launches.start({vrStartup, "-shutdown", true}); }
    QStringList running() const
    {
        QStringList names;
        for (const processes::Entry &process : pc.processes.list())
            names.append(process.name);
        return names;
    }
    bool steamVrIsUp() const { return running() == QStringList("steam.exe") + allOfSteamVr; }

    ManualClock clock;
    SimPc pc{clock};
    SteamOptions options;
    QStringList calls; // "start", "stop"
};
