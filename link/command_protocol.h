// The texts that the streaming server and this program exchange: understanding
// the received ones, building the sent ones. Pure functions, any thread.
#pragma once

#include "link/headset_record.h"

#include <string_view>
#include <variant>

namespace command_protocol {

// A received line: the command's name up to the first TAB, the argument after
// it. Views into the line.
struct Line
{
    std::string_view name;
    std::string_view argument; // empty without a TAB
};

Line splitLine(std::string_view line);

// Received bytes as text. They are UTF-8; what is not becomes replacement
// characters.
QString toText(std::string_view bytes);

// --- received commands, by their names ---------------------------------------

// "DeviceConnectBack": whether the headset on the USB cable is connected, which
// it is when "true" occurs anywhere in the argument.
struct DeviceConnectBack
{
    bool connected = false;
};

// "HMDINFOBACK": the headsets that the server sees. The argument's items are
// separated by "~", either the current headset's id behind "deviceId:" or
// "serial;address;state;" and a fourth field that only the server knows the
// meaning of. Other items are skipped.
struct HmdInfoBack
{
    QString deviceId; // empty: not reported
    HeadsetList headsets;
};

// "RESTARTSTEAMVR": the server wants SteamVR restarted.
struct RestartSteamVR
{
};

// "Hello": the server wants to know whether somebody is there.
struct Hello
{
};

// Any other name, also one in other letters or with a carriage return.
struct Unknown
{
};

using Command = std::variant<Unknown, DeviceConnectBack, HmdInfoBack, RestartSteamVR, Hello>;

// What a line says. Nothing in it is an error. Takes time in proportion to its
// length.
[[nodiscard]] Command parse(const Line &line);

// --- sent texts ----------------------------------------------------------------

QString linkTo(const QString &serial, const QString &address);
QString disconnect(const QString &serial, const QString &address);
QString hmdInfoRequest();
QString connectionRequest(bool wired);
QString registerFirewall();
QString helloReply();

} // namespace command_protocol
