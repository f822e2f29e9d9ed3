#include "controller/connection_flow.h"

#include "base/clock.h"
#include "config/config_manager.h"
#include "controller/vr_list_model.h"
#include "sysinfo/system_info.h"

#include <QDebug>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto answerTime = 200ms; // until the server's answer is there
constexpr auto stepDelay = 1s;     // after a connect or disconnect

} // namespace

ConnectionFlow::ConnectionFlow(Clock &clock, ConfigManager &config, SystemInfo &system,
                               VRListModel &model, QObject *parent)
    : QObject(parent), clock_(clock), config_(config), system_(system), model_(model)
{
}

bool ConnectionFlow::requestReport(LinkKind kind)
{
    if (skipNext_) {
        skipNext_ = false;
        return false;
    }
    if (link_) {
        if (isWired(kind))
            link_->sendWiredConnect(true);
        else
            link_->requestHmdInfo();
    }
    clock_.sleep(answerTime);
    return true;
}

void ConnectionFlow::stepWired(bool steamVRRunning)
{
    system_.setDeviceSN(knownSerial_);
    connected_ = link_ && link_->isDeviceConnected() && steamVRRunning;
    reportTaken_ = link_ && link_->hasReported(true);
    wasConnectedByUsb_ = wasConnectedByUsb_ || (reportTaken_ && connected_);
    emit connectionChanged();
}

void ConnectionFlow::showWiredList()
{
    emit listShown(connected_, userDisconnected_);
}

void ConnectionFlow::stepWireless()
{
    knownSerial_ = link_ ? link_->deviceId() : QString();
    system_.setDeviceSN(knownSerial_);
    const HeadsetList headsets = link_ ? link_->hmdInfoList() : HeadsetList();
    reportTaken_ = link_ && link_->hasReported(false);
    model_.refill(headsets, recent_);

    const QString previous = connectedSerial_;
    connectedSerial_.clear();
    connectedAddress_.clear();
    if (firstContactHandled_)
        followHeadset(headsets, previous);
    else
        firstContact(headsets);

    emit listShown(!connectedSerial_.isEmpty(), userDisconnected_);
    if (connectedSerial_ != previous) {
        connected_ = !connectedSerial_.isEmpty();
        emit connectionChanged();
    }
}

void ConnectionFlow::firstContact(const HeadsetList &headsets)
{
    if (headsets.size() == 1) {
        const HeadsetRecord &headset = headsets.front();
        if (headset.address.isEmpty() || headset.connected)
            return;
        firstContactHandled_ = true;
        qInfo("vr first connect");
        connectHeadset(headset.serial, headset.address, true);
    } else if (headsets.size() > 1) {
        firstContactHandled_ = true;
        userAsked_ = true;
        emit severalHeadsets();
    }
}

void ConnectionFlow::followHeadset(const HeadsetList &headsets, const QString &previous)
{
    if (userDisconnected_)
        return;
    for (const HeadsetRecord &headset : headsets) {
        if (headset.connected) {
            qInfo().noquote().nospace()
                << "vr reconnect sn from: " << previous << " to " << headset.serial;
            connectedSerial_ = headset.serial;
            makeCurrent(headset.serial);
            connectedAddress_ = headset.address;
            wantedSerial_ = headset.serial;
            wishIsOfThisLink_ = true;
            userAsked_ = false;
            return;
        }
        if (!wantedSerial_.isEmpty() && headset.serial == wantedSerial_) {
            qInfo().noquote().nospace() << "vr reconnect: " << wantedSerial_;
            wantedSerial_.clear();
            connectHeadset(headset.serial, headset.address, true);
            return;
        }
    }
}

void ConnectionFlow::connectHeadset(const QString &name, const QString &address, bool connect)
{
    wishIsOfThisLink_ = true;
    userAsked_ = false;
    if (connect) {
        qInfo().noquote().nospace() << "connect VR" << connectedSerial_;
        if (!connectedSerial_.isEmpty()) {
            if (link_)
                link_->disconnect(connectedSerial_, connectedAddress_);
            clock_.sleep(answerTime);
        }
        skipNext_ = true;
        if (!recent_.contains(name)) {
            recent_.prepend(name);
            emit headsetAdded();
        }
        userDisconnected_ = false;
        wantedSerial_ = name;
        makeCurrent(name);
        if (link_)
            link_->linkTo(name, address);
    } else {
        userDisconnected_ = true;
        wantedSerial_.clear();
        if (link_)
            link_->disconnect(connectedSerial_, connectedAddress_);
        skipNext_ = true;
    }
    clock_.singleShot(stepDelay, this, [this] {
        if (link_)
            link_->requestHmdInfo();
        clock_.sleep(answerTime);
        emit stepDue();
    });
}

void ConnectionFlow::makeCurrent(const QString &serial)
{
    knownSerial_ = serial;
    if (config_.setDeviceSn(serial))
        emit settingsLoaded();
}

void ConnectionFlow::usbAttached(const QString &serial)
{
    knownSerial_ = serial;
    takeUsbHeadset(serial);
}

void ConnectionFlow::usbDetached()
{
    takeUsbHeadset(QString());
}

void ConnectionFlow::takeUsbHeadset(const QString &serial)
{
    connectedSerial_ = serial;
    connected_ = link_ && link_->isDeviceConnected();
    emit connectionChanged();
    showWiredList();
}

void ConnectionFlow::forgetHeadset()
{
    connectedSerial_.clear();
    firstContactHandled_ = false;
    wishIsOfThisLink_ = false;
    userAsked_ = false;
}

void ConnectionFlow::awaitReport()
{
    reportTaken_ = false;
    wasConnectedByUsb_ = false;
}

QString ConnectionFlow::serverProgram() const
{
    const auto peer = link_ ? link_->peer() : std::nullopt;
    return peer ? QStringLiteral("%1 (%2)").arg(peer->name).arg(peer->pid) : QString();
}

connection::Facts ConnectionFlow::facts(LinkKind kind) const
{
    connection::Facts facts;
    facts.wired = isWired(kind);
    facts.server = link_ && link_->hasClient();
    if (!facts.server || !reportTaken_ || !link_->hasReported(facts.wired))
        return facts;
    if (!facts.wired)
        return withWireless(facts);
    facts.connected = connected_;
    facts.expected = wasConnectedByUsb_;
    return facts;
}

connection::Facts ConnectionFlow::withWireless(connection::Facts facts) const
{
    facts.found = model_.rowCount() > 0;
    facts.asked = userAsked_;
    if (!wishIsOfThisLink_)
        return facts;
    facts.letGo = userDisconnected_;
    facts.expected = !wantedSerial_.isEmpty();
    facts.wanted = facts.expected && model_.isReachable(wantedSerial_);
    facts.connected = connected_ && facts.expected && connectedSerial_ == wantedSerial_;
    return facts;
}
