#include "link/command_dispatcher.h"

#include "link/command_protocol.h"

#include <QDebug>

#include <utility>

namespace {

// A server that sends other things but no list of headsets has none.
constexpr quint32 forgetAfterBatches = 10;

} // namespace

CommandDispatcher::CommandDispatcher(Callbacks callbacks) : callbacks_(std::move(callbacks)) {}

void CommandDispatcher::processBatch(const std::vector<std::string> &lines)
{
    if (lines.empty())
        return;
    bool reported = false;
    for (const std::string &line : lines) {
        const command_protocol::Command command = command_protocol::splitLine(line);
        if (command.name == command_protocol::hmdInfoBack) {
            const std::lock_guard<std::mutex> lock(mutex_);
            idleBatches_ = 0;
            reported = true;
        }
        dispatch(command.name, command.argument);
        quint32 idleBatches;
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            idleBatches = idleBatches_;
        }
        qInfo() << command_protocol::toText(command.name)
                << command_protocol::toText(command.argument) << idleBatches;
    }
    if (reported)
        return;
    const std::lock_guard<std::mutex> lock(mutex_);
    if (++idleBatches_ == forgetAfterBatches) {
        idleBatches_ = 0;
        hmdInfoBack_.clear();
    }
}

void CommandDispatcher::dispatch(std::string_view name, std::string_view argument)
{
    if (name == command_protocol::deviceConnectBack) {
        const std::lock_guard<std::mutex> lock(mutex_);
        deviceConnected_ = command_protocol::saysConnected(argument);
    } else if (name == command_protocol::hmdInfoBack) {
        takeHmdInfo(argument);
    } else if (name == command_protocol::restartSteamVR) {
        if (callbacks_.restartSteamVR)
            callbacks_.restartSteamVR();
    } else if (name == command_protocol::hello) {
        callbacks_.send(command_protocol::helloReply());
    }
}

void CommandDispatcher::takeHmdInfo(std::string_view argument)
{
    command_protocol::HmdInfo info =
        command_protocol::parseHmdInfo(command_protocol::toText(argument));
    const int size = info.headsets.size();
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!info.deviceId.isEmpty())
            deviceId_.swap(info.deviceId);
        hmdInfoBack_.swap(info.headsets);
    }
    qInfo().noquote() << QStringLiteral("m_hmd_info_back vector size: %1").arg(size);

    bool registerFirewall;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        registerFirewall = std::exchange(registerFirewallPending_, false);
    }
    if (registerFirewall) {
        qInfo("RegisterFireWall");
        callbacks_.send(command_protocol::registerFirewall());
    }
}

void CommandDispatcher::setRegisterFirewallPending()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    registerFirewallPending_ = true;
}

bool CommandDispatcher::isDeviceConnected() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return deviceConnected_;
}

QString CommandDispatcher::deviceId() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return deviceId_;
}

HeadsetList CommandDispatcher::headsets() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return hmdInfoBack_;
}
