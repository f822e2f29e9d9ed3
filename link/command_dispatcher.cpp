#include "link/command_dispatcher.h"

#include <QDebug>

#include <utility>

namespace {

// A server that sends other things but no list of headsets has none.
constexpr quint32 forgetAfterBatches = 10;

} // namespace

CommandDispatcher::CommandDispatcher(Dependencies dependencies)
    : dependencies_(std::move(dependencies))
{
}

CommandDispatcher::Reported CommandDispatcher::processBatch(const std::vector<std::string> &lines)
{
    Reported reported;
    if (lines.empty())
        return reported;
    restarted_ = false;
    for (const std::string &line : lines) {
        if (dependencies_.isEnding && dependencies_.isEnding())
            return reported;
        actOn(command_protocol::splitLine(line), &reported);
    }
    if (reported.list)
        return reported;
    const MutexLock lock(mutex_);
    if (++idleBatches_ == forgetAfterBatches) {
        idleBatches_ = 0;
        hmdInfoBack_.clear();
    }
    return reported;
}

void CommandDispatcher::actOn(const command_protocol::Line &line, Reported *reported)
{
    command_protocol::Command command = command_protocol::parse(line);
    reported->usb |= std::holds_alternative<command_protocol::DeviceConnectBack>(command);
    reported->list |= std::holds_alternative<command_protocol::HmdInfoBack>(command);
    std::visit([this](auto &received) { act(received); }, command);
    if (!std::holds_alternative<command_protocol::Unknown>(command))
        log(line);
    else if (unknown_.isNews(line.name))
        log({UnknownLines::cut(line.name), UnknownLines::cut(line.argument)});
}

void CommandDispatcher::log(const command_protocol::Line &line)
{
    quint32 idleBatches;
    {
        const MutexLock lock(mutex_);
        idleBatches = idleBatches_;
    }
    qInfo() << command_protocol::toText(line.name) << command_protocol::toText(line.argument)
            << idleBatches;
}

void CommandDispatcher::act(const command_protocol::DeviceConnectBack &report)
{
    const MutexLock lock(mutex_);
    deviceConnected_ = report.connected;
}

void CommandDispatcher::act(command_protocol::HmdInfoBack &report)
{
    const int size = report.headsets.size();
    {
        // The old list goes outside of the lock.
        const MutexLock lock(mutex_);
        idleBatches_ = 0;
        if (!report.deviceId.isEmpty())
            deviceId_.swap(report.deviceId);
        hmdInfoBack_.swap(report.headsets);
    }
    qInfo().noquote() << QStringLiteral("m_hmd_info_back vector size: %1").arg(size);

    bool registerFirewall;
    {
        const MutexLock lock(mutex_);
        registerFirewall = std::exchange(registerFirewallPending_, false);
    }
    if (registerFirewall) {
        qInfo("RegisterFireWall");
        dependencies_.send(command_protocol::registerFirewall());
    }
}

void CommandDispatcher::act(const command_protocol::RestartSteamVR &)
{
    if (dependencies_.restartSteamVR && !std::exchange(restarted_, true))
        dependencies_.restartSteamVR();
}

void CommandDispatcher::act(const command_protocol::Hello &)
{
    dependencies_.send(command_protocol::helloReply());
}

void CommandDispatcher::setRegisterFirewallPending()
{
    const MutexLock lock(mutex_);
    registerFirewallPending_ = true;
}

bool CommandDispatcher::isDeviceConnected() const
{
    const MutexLock lock(mutex_);
    return deviceConnected_;
}

QString CommandDispatcher::deviceId() const
{
    const MutexLock lock(mutex_);
    return deviceId_;
}

HeadsetList CommandDispatcher::headsets() const
{
    const MutexLock lock(mutex_);
    return hmdInfoBack_;
}
