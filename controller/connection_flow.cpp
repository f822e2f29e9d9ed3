#include "controller/connection_flow.h"

#include "base/clock.h"
#include "config/config_manager.h"
#include "controller/vr_list_model.h"
#include "sysinfo/system_info.h"

#include <QDebug>

namespace {

constexpr int answerTime = 200;      // ms until the server's answer is there
constexpr int lookAgainDelay = 1000; // ms after a connect or disconnect

} // namespace

ConnectionFlow::ConnectionFlow(Clock &clock, ConfigManager &config, SystemInfo &system,
                               VRListModel &model, QObject *parent)
    : QObject(parent), clock_(clock), config_(config), system_(system), model_(model)
{
}

bool ConnectionFlow::ask(bool wired)
{
    if (skipNext_) {
        skipNext_ = false;
        return false;
    }
    if (link_) {
        if (wired)
            link_->sendWiredConnect(true);
        else
            link_->requestHmdInfo();
    }
    clock_.sleep(answerTime);
    return true;
}

void ConnectionFlow::lookWired(bool steamVRRunning)
{
    system_.setDeviceSN(currentSerial_);
    connected_ = link_ && link_->isDeviceConnected() && steamVRRunning;
    emit connectionChanged();
}

void ConnectionFlow::showWiredList()
{
    emit listShown(connected_, userDisconnected_);
}

void ConnectionFlow::lookWireless()
{
    currentSerial_ = link_ ? link_->deviceId() : QString();
    system_.setDeviceSN(currentSerial_);
    const HeadsetList headsets = link_ ? link_->hmdInfoList() : HeadsetList();
    model_.refill(headsets, recent_);

    const QString previous = serial_;
    serial_.clear();
    address_.clear();
    if (firstContactHandled_)
        followHeadset(headsets, previous);
    else
        firstContact(headsets);

    emit listShown(!serial_.isEmpty(), userDisconnected_);
    if (serial_ != previous) {
        connected_ = !serial_.isEmpty();
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
            serial_ = headset.serial;
            makeCurrent(headset.serial);
            address_ = headset.address;
            reconnectSerial_ = headset.serial;
            return;
        }
        if (!reconnectSerial_.isEmpty() && headset.serial == reconnectSerial_) {
            qInfo().noquote().nospace() << "vr reconnect: " << reconnectSerial_;
            reconnectSerial_.clear();
            connectHeadset(headset.serial, headset.address, true);
            return;
        }
    }
}

void ConnectionFlow::connectHeadset(const QString &name, const QString &address, bool connect)
{
    if (connect) {
        qInfo().noquote().nospace() << "connect VR" << serial_;
        if (!serial_.isEmpty()) {
            if (link_)
                link_->disconnect(serial_, address_);
            clock_.sleep(answerTime);
        }
        skipNext_ = true;
        if (!recent_.contains(name))
            recent_.prepend(name);
        userDisconnected_ = false;
        reconnectSerial_ = name;
        makeCurrent(name);
        if (link_)
            link_->linkTo(name, address);
    } else {
        userDisconnected_ = true;
        reconnectSerial_.clear();
        if (link_)
            link_->disconnect(serial_, address_);
        skipNext_ = true;
    }
    clock_.singleShot(lookAgainDelay, this, [this] {
        if (link_)
            link_->requestHmdInfo();
        clock_.sleep(answerTime);
        emit lookAgain();
    });
}

void ConnectionFlow::makeCurrent(const QString &serial)
{
    currentSerial_ = serial;
    if (config_.setDeviceSn(serial))
        emit settingsLoaded();
}

void ConnectionFlow::usbHeadset(const QString &serial)
{
    serial_ = serial;
    connected_ = link_ && link_->isDeviceConnected();
    emit connectionChanged();
    showWiredList();
}

void ConnectionFlow::forgetHeadset()
{
    serial_.clear();
    firstContactHandled_ = false;
}
