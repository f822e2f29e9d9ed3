// A whole controller on a simulated PC, with a streaming server in the same
// process that answers through the real dispatcher.
#pragma once

#include "base/manual_clock.h"
#include "config/config_manager.h"
#include "controller/orb_dependencies.h"
#include "controller/orb_manager.h"
#include "link/command_dispatcher.h"
#include "link/headset_link.h"
#include "simpc/sim_pc.h"
#include "simpc/steam_world.h"
#include "steamvr/steam_manager.h"
#include "sysinfo/system_info.h"
#include "tests/simpc/steam_options.h"
#include "tests/support/vr_path_file.h"
#include "usb/adb_manger.h"

#include <QUrl>

#include <functional>
#include <memory>
#include <optional>

// The link without its socket: what is sent reaches a small streaming server,
// whose lines go through the dispatcher as one batch each.
class ServerInProcess final : public HeadsetLink
{
public:
    explicit ServerInProcess(std::function<void()> restartSteamVR = {});

    // --- the server's side ---
    bool present = true;                        // whether it is connected
    HeadsetList headsets;                       // what it reports
    QString reportedId;                         // "deviceId:" item of the report; empty: none
    bool usbConnected = false;                  // its answer to "WiredConnect"
    bool obeys = true;                          // whether "LinkTo" connects the headset
    ControlPort port;                           // what came of its port
    std::optional<ControlPort::Holder> program; // that it is
    bool answers = true;                        // whether it says anything about headsets
    QStringList received;                       // every text that arrived

    // --- the program's side ---
    void linkTo(const QString &serial, const QString &address) override;
    void disconnect(const QString &serial, const QString &address) override;
    void requestHmdInfo() override;
    void sendWiredConnect(bool wired) override;
    void setRegisterFirewallPending() override;
    bool isDeviceConnected() const override;
    QString deviceId() const override;
    HeadsetList hmdInfoList() const override;
    bool hasClient() const override;
    ControlPort controlPort() const override { return port; }
    std::optional<ControlPort::Holder> peer() const override { return program; }
    bool hasReported(bool wired) const override;

private:
    bool receive(const QString &text);
    void report(const QString &line);

    CommandDispatcher dispatcher_;
    CommandDispatcher::Reported reported_; // by the server that is present
};

// Everything that the controller stands on. Steam and SteamVR behave like the
// real ones.
struct PcFixture
{
    using Describe = std::function<void(SimPc &)>;

    // `describe` tells what else the PC is like before anybody asks it.
    explicit PcFixture(const QString &dir, const SteamOptions &options = {},
                       const Describe &describe = {});
    ~PcFixture();

    QJsonObject vrPath() const { return vr_path_file::read(dir); }
    // Runs what was handed to the pool.
    void runPool();
    // Lets time pass in steps of a second: pool work and posted calls get
    // their turns.
    void pass(int milliseconds);

    QString dir;
    ManualClock clock;
    SimPc pc;
    ConfigManager config;
    std::vector<std::function<void()>> pool;
    SteamManager steam;
    SystemInfo system;
    QStringList adbLines; // the command lines that were to be run
    AdbManger adb{{clock, [this](const QString &line, const QString &) { adbLines << line; }}};
    ServerInProcess server;
};

// The controller on it, with a record of everything that it emits.
struct ControllerFixture : PcFixture
{
    explicit ControllerFixture(const QString &dir, const SteamOptions &options = {},
                               const Describe &describe = {});
    ~ControllerFixture();

    // The object under test, made on first use.
    ORBManager &orb();
    // Ends it, as the program does.
    void close();

    // Signals with their arguments, for example "showToast(text,2000)".
    QStringList emitted;
    int count(const QString &signal) const { return emitted.count(signal); }
    QStringList toasts() const;

    QList<QPair<QString, QJsonObject>> events;
    QList<int> sentAfter;                       // how many events there were when they were sent
    QList<QPair<QString, QString>> uploads;     // path and name
    std::function<void(bool taken)> uploadDone; // what the last one is waited for by
    QList<QUrl> opened;
    bool linkMade = false;
    QString applicationDir = QStringLiteral("C:/KOLM");

private:
    class Dependencies;

    std::unique_ptr<ORBManager> orb_;
};
