#include "controller/poll.h"

#include "base/clock.h"
#include "controller/connection_flow.h"
#include "controller/connection_road.h"
#include "controller/readiness.h"
#include "sysinfo/system_info.h"

#include <QCoreApplication>

#include <algorithm>

Poll::Poll(Parts parts, QObject *parent) : QObject(parent), parts_(std::move(parts)) {}

void Poll::run()
{
    look();
    walkRoad();
}

void Poll::look()
{
    const PowerTip::Change change = powerTip_.update(power::acLine());
    if (change != PowerTip::Change::None)
        emit powerTip(change == PowerTip::Change::Show);

    parts_.readiness.lookForSteam();
    parts_.readiness.lookForSteamVR();
    if (!parts_.readiness.steamRunning() && !parts_.readiness.steamVRRunning())
        return;

    if (!parts_.system.isAudioOutputSupported()) {
        emit toast(
            QCoreApplication::translate(
                "ORBManager",
                "当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备"),
            2000);
    }
    if (parts_.wired()) {
        parts_.flow.lookWired(parts_.readiness.steamVRRunning());
        parts_.checkUsb();
        parts_.flow.showWiredList();
        return;
    }
    if (checkNetwork_ && parts_.system.networkCategory().contains(QLatin1String("Public"))) {
        emit publicNetwork();
        checkNetwork_ = false;
    }
    parts_.flow.lookWireless();
}

void Poll::walkRoad()
{
    ConnectionRoad::State state;
    state.steam = parts_.readiness.steamRunning();
    state.steamVR = parts_.readiness.steamVRRunning();
    state.linked = parts_.flow.isConnected();
    if (const HeadsetLink *link = parts_.flow.link()) {
        state.server = link->hasClient();
        const HeadsetList headsets = link->hmdInfoList();
        // One on the cable is not in the list of those on the network.
        state.headset =
            state.linked || std::any_of(headsets.begin(), headsets.end(),
                                        [](const HeadsetRecord &h) { return !h.serial.isEmpty(); });
    }
    if (parts_.wired()) // adb finds it, and the streaming server need not know its name
        state.headset = state.linked || !parts_.flow.headsetSerial().isEmpty();
    parts_.road.update(state, parts_.clock.now());
}
