// What the rest of the program can ask of the streaming server.
#pragma once

#include "link/control_port.h"
#include "link/headset_record.h"

// The control link to the streaming server. Requests return at once and go out
// in the order in which they were made; what the server answers shows in the
// getters some time later. Nothing here fails visibly: without a server a
// request is lost and the getters keep their last values.
//
// Any thread.
class HeadsetLink
{
public:
    virtual ~HeadsetLink() = default;

    // Connects the headset `serial` at `address`; nothing without a server.
    virtual void linkTo(const QString &serial, const QString &address) = 0;
    // Drops it; nothing without a server.
    virtual void disconnect(const QString &serial, const QString &address) = 0;
    // Asks for the list of headsets.
    virtual void requestHmdInfo() = 0;
    // Says which kind of link is wanted: USB (true) or Wi-Fi.
    virtual void sendWiredConnect(bool wired) = 0;
    // The next list of headsets is answered with the request to register the
    // firewall rule, once.
    virtual void setRegisterFirewallPending() = 0;

    // Whether the server said that the USB headset is connected.
    virtual bool isDeviceConnected() const = 0;
    // The serial that the server reported last.
    virtual QString deviceId() const = 0;
    // The headsets of the last report; one empty record while no server is
    // connected.
    virtual HeadsetList hmdInfoList() const = 0;
    // Whether a server is connected.
    virtual bool hasClient() const = 0;
    // What came of the attempt to listen for it.
    virtual ControlPort controlPort() const = 0;
    // The program that is connected now and was heard of; nothing when there is none,
    // or the PC does not say.
    virtual std::optional<ControlPort::Holder> peer() const = 0;
    // Whether the server that is connected now has itself said if the USB
    // headset is connected (`wired`), or sent a list: the getters above also
    // keep what one before it said.
    virtual bool hasReported(bool wired) const = 0;
};
