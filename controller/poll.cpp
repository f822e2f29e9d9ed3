#include "controller/poll.h"

#include "base/threads.h"
#include "checks/check_runner.h"
#include "checks/steam_watch.h"
#include "controller/connection_flow.h"
#include "controller/connection_tracker.h"
#include "controller/usb_headset.h"
#include "sysinfo/system_info.h"

#include <QCoreApplication>

Poll::Poll(const Dependencies &dependencies, QObject *parent) : QObject(parent), deps_(dependencies)
{
}

void Poll::run(LinkKind kind)
{
    takeSteps(kind);
    deps_.tracker.update();
    deps_.checks.judge();
}

void Poll::takeSteps(LinkKind kind)
{
    Facts &facts = deps_.checks.facts();
    facts.forgetPoll();
    facts.missingThreads = threads::missing();
    const std::optional<power::AcLine> line = power::acLine();
    facts.power = line.value_or(power::AcLine::Unknown);
    const PowerTip::Change change = powerTip_.update(line);
    if (change != PowerTip::Change::None)
        emit powerTip(change == PowerTip::Change::Show);

    deps_.steam.check();
    facts.steamRunning = deps_.steam.steamRunning();
    facts.steamVRRunning = deps_.steam.steamVRRunning();
    facts.steamFailure = deps_.steam.steamFailure();
    facts.steamVRStopFailure = deps_.steam.steamVRStopFailure();
    if (!*facts.steamRunning && !*facts.steamVRRunning)
        return;

    facts.stereoOutput = deps_.system.isAudioOutputSupported();
    if (!*facts.stereoOutput) {
        emit toast(
            QCoreApplication::translate(
                "ORBManager",
                "当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备"),
            2000);
    }
    if (isWired(kind)) {
        deps_.flow.stepWired(*facts.steamVRRunning);
        facts.adb = deps_.usb.checkDevices();
        deps_.flow.showWiredList();
        return;
    }
    facts.networkCategory = deps_.system.networkCategory();
    if (checkNetwork_ && facts.networkCategory->contains(QLatin1String("Public"))) {
        emit publicNetwork();
        checkNetwork_ = false;
    }
    deps_.flow.stepWireless();
}
