// The owner of the control link to the streaming server.
#pragma once

#include "link/headset_link.h"

#include <functional>
#include <memory>

class Poller;
class IPCSock;
class CommandDispatcher;

// Listens on 127.0.0.1:9932, takes one client at a time and runs the link on a
// worker thread of its own, which alone touches the sockets and sleeps in the
// kernel until there is something to do.
class SysManager final : public HeadsetLink
{
public:
    // `restartSteamVR` is called on the worker thread when the server asks for
    // a restart. Does not listen yet.
    explicit SysManager(std::function<void()> restartSteamVR);
    ~SysManager() override;

    SysManager(const SysManager &) = delete;
    SysManager &operator=(const SysManager &) = delete;

    // The product's one. setRestartHandler() says beforehand what a restart
    // request does; the first call of instance() starts the link.
    static SysManager &instance();
    static void setRestartHandler(std::function<void()> restartSteamVR);

    // Listens and starts the worker; false when the port cannot be had, and
    // then the link stays silent for this run.
    bool start();

    void linkTo(const QString &serial, const QString &address) override;
    void disconnect(const QString &serial, const QString &address) override;
    void requestHmdInfo() override;
    void sendWiredConnect(bool wired) override;
    void setRegisterFirewallPending() override;
    bool isDeviceConnected() const override;
    QString deviceId() const override;
    HeadsetList hmdInfoList() const override;
    bool hasClient() const override;

    // Sends a text of the protocol as it stands.
    void sendRaw(const QString &text);

private:
    struct Worker;
    std::unique_ptr<Worker> worker_;
};
