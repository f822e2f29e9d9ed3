#include "controller/poll.h"

#include "base/clock.h"
#include "controller/connection_flow.h"
#include "controller/connection_road.h"
#include "controller/readiness.h"
#include "controller/usb_headset.h"
#include "sysinfo/system_info.h"

#include <QCoreApplication>

#include <algorithm>

Poll::Poll(const Dependencies &dependencies, QObject *parent) : QObject(parent), deps_(dependencies)
{
}

void Poll::run(LinkKind kind)
{
    look(kind);
    updateStages(kind);
}

void Poll::look(LinkKind kind)
{
    const PowerTip::Change change = powerTip_.update(power::acLine());
    if (change != PowerTip::Change::None)
        emit powerTip(change == PowerTip::Change::Show);

    deps_.readiness.lookForSteam();
    deps_.readiness.lookForSteamVR();
    if (!deps_.readiness.steamRunning() && !deps_.readiness.steamVRRunning())
        return;

    if (!deps_.system.isAudioOutputSupported()) {
        emit toast(
            QCoreApplication::translate(
                "ORBManager",
                "当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备"),
            2000);
    }
    if (isWired(kind)) {
        deps_.flow.stepWired(deps_.readiness.steamVRRunning());
        deps_.usb.look();
        deps_.flow.showWiredList();
        return;
    }
    if (checkNetwork_ && deps_.system.networkCategory().contains(QLatin1String("Public"))) {
        emit publicNetwork();
        checkNetwork_ = false;
    }
    deps_.flow.stepWireless();
}

void Poll::updateStages(LinkKind kind)
{
    ConnectionRoad::State state;
    state.steam = deps_.readiness.steamRunning();
    state.steamVR = deps_.readiness.steamVRRunning();
    state.linked = deps_.flow.isConnected();
    if (const HeadsetLink *link = deps_.flow.link()) {
        state.server = link->hasClient();
        const HeadsetList headsets = link->hmdInfoList();
        // One on the cable is not in the list of those on the network.
        state.headset =
            state.linked || std::any_of(headsets.begin(), headsets.end(),
                                        [](const HeadsetRecord &h) { return !h.serial.isEmpty(); });
    }
    if (isWired(kind)) // adb finds it, and the streaming server need not know its name
        state.headset = state.linked || !deps_.flow.connectedSerial().isEmpty();
    deps_.road.update(state, deps_.clock.now());
}
