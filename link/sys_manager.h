// The owner of the control link to the streaming server.
#pragma once

#include "link/headset_link.h"

#include <functional>
#include <memory>
#include <optional>

// Listens on 127.0.0.1:9932, takes one client at a time and runs the link on a
// worker thread of its own, which alone touches the sockets and sleeps in the
// kernel until there is something to do.
class SysManager final : public HeadsetLink
{
public:
    // `restartSteamVR` is called on the worker thread when the server asks for
    // a restart; it may block, and the link stands still meanwhile. A port
    // below 1 stands for 9932. Does not listen yet.
    explicit SysManager(std::function<void()> restartSteamVR, int port = -1);
    // Sends what was asked for before, then closes. Waits for the worker.
    ~SysManager() override;

    SysManager(const SysManager &) = delete;
    SysManager &operator=(const SysManager &) = delete;

    // Says who else has the port, if anybody.
    using LookForHolder = std::function<std::optional<ControlPort::Holder>()>;
    // Says who has connected from this port of the PC; called on the worker thread.
    using LookForPeer = std::function<std::optional<ControlPort::Holder>(quint16 peerPort)>;

    // The product's one. The others say beforehand what a restart request does
    // and how it learns who has the port and who connects to it; the first call of instance()
    // starts the link.
    static SysManager &instance();
    static void setRestartHandler(std::function<void()> restartSteamVR);
    static void setLookForHolder(LookForHolder lookForHolder);
    static void setLookForPeer(LookForPeer lookForPeer);

    // Listens and starts the worker; false when the port cannot be had, and
    // then the link stays silent for this run. Before it listens it looks who has
    // the port; what came of both is kept as controlPort(). Before
    // other threads use this object.
    bool start(const LookForHolder &lookForHolder = {}, const LookForPeer &lookForPeer = {});

    void linkTo(const QString &serial, const QString &address) override;
    void disconnect(const QString &serial, const QString &address) override;
    void requestHmdInfo() override;
    void sendWiredConnect(bool wired) override;
    void setRegisterFirewallPending() override;
    bool isDeviceConnected() const override;
    QString deviceId() const override;
    HeadsetList hmdInfoList() const override;
    bool hasClient() const override;
    ControlPort controlPort() const override { return controlPort_; }
    std::optional<ControlPort::Holder> peer() const override;
    bool hasReported(bool wired) const override;

    // Sends a text of the protocol as it stands, up to its first NUL if it
    // holds one. Writes it to the standard output as well, also when there is
    // no server to send it to.
    void sendRaw(const QString &text);

    // How often the worker has left its sleep so far.
    quint64 wakeUps() const;

private:
    struct Worker;
    std::unique_ptr<Worker> worker_;
    ControlPort controlPort_; // as start() left it
};
