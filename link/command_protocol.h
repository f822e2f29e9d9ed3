// The texts that the streaming server and this program exchange: understanding
// the received ones, building the sent ones. Pure functions, any thread.
#pragma once

#include "link/headset_record.h"

#include <string_view>

namespace command_protocol {

// Received commands.
constexpr std::string_view deviceConnectBack = "DeviceConnectBack";
constexpr std::string_view hmdInfoBack = "HMDINFOBACK";
constexpr std::string_view restartSteamVR = "RESTARTSTEAMVR";
constexpr std::string_view hello = "Hello";

// A received line: the command up to the first TAB, the argument after it.
// Views into the line.
struct Command
{
    std::string_view name;
    std::string_view argument; // empty without a TAB
};

Command splitLine(std::string_view line);

// Received bytes as text. They are UTF-8; what is not becomes replacement
// characters.
QString toText(std::string_view bytes);

// Whether the argument of "DeviceConnectBack" says that the headset is there.
bool saysConnected(std::string_view argument);

struct HmdInfo
{
    QString deviceId; // empty: not reported
    HeadsetList headsets;
};

// The argument of "HMDINFOBACK": items separated by "~", either the current
// headset's id behind "deviceId:" or "serial;address;state;" and a fourth field
// that only the server knows the meaning of. Other items are skipped. Time is
// linear in the length.
HmdInfo parseHmdInfo(const QString &argument);

// Sent texts.
QString linkTo(const QString &serial, const QString &address);
QString disconnect(const QString &serial, const QString &address);
QString hmdInfoRequest();
QString connectionRequest(bool wired);
QString registerFirewall();
QString helloReply();

} // namespace command_protocol
