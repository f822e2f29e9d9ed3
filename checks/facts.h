// Everything that is known about this PC and its connection, as a value.
#pragma once

#include "checks/stage.h"
#include "link/control_port.h"
#include "pc/power.h"
#include "steamvr/launch_failure.h"
#include "usb/adb_rules.h"

#include <QString>
#include <QStringList>

#include <optional>

// What has no value was not asked for yet, or is not worth knowing now; no row
// finds anything by it. A copy costs little.
struct Facts
{
    // How many stages are reached without a gap.
    std::optional<int> reached;
    std::optional<bool> wired; // on the USB cable; otherwise by Wi-Fi

    // What the steps of the poll learn.
    std::optional<power::AcLine> power; // Unknown also when the system does not say
    std::optional<bool> steamInstalled;
    std::optional<bool> steamRunning;
    std::optional<bool> steamVRRunning;
    // Why Steam could not be started, and SteamVR not be asked to close, when it
    // was tried last.
    std::optional<LaunchFailure> steamFailure;
    std::optional<LaunchFailure> steamVRStopFailure;
    std::optional<bool> stereoOutput;       // the first sound output is a stereo one
    std::optional<QString> networkCategory; // "Public", "Private" or empty
    std::optional<adb_rules::AdbState> adb;

    // The port on which the streaming server looks for this program.
    std::optional<ControlPort> controlPort;
    // The programs that hold the streaming server's ports and are no part of
    // streaming.
    std::optional<QStringList> portHolders;

    // What this program has no thread for.
    QStringList missingThreads;

    // What this PC is; the names as the system says them.
    QString cpuName;
    QString gpuName;
    std::optional<QString> systemVersion; // "10", "8.1"
    std::optional<int> hardwareScore;
    std::optional<QStringList> nvidiaDrivers; // their versions, "31.0.15.5176"

    // A poll begins anew. It asks about power, Steam and SteamVR whatever
    // happens, but may not get to the rest.
    void forgetPoll();

    // Whether the connection has got so far.
    bool has(Stage stage) const { return reached && *reached > static_cast<int>(stage); }
};
