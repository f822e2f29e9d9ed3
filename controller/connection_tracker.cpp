#include "controller/connection_tracker.h"

#include "base/clock.h"
#include "checks/facts.h"
#include "checks/steam_watch.h"
#include "controller/connection_flow.h"
#include "controller/connection_road.h"
#include "controller/connection_status.h"
#include "controller/usb_headset.h"

ConnectionTracker::ConnectionTracker(const Dependencies &dependencies, QObject *parent)
    : QObject(parent), deps_(dependencies)
{
}

void ConnectionTracker::update()
{
    if (!deps_.steam.steamVRRunning())
        stopped_ = false; // the polls know by now
    const connection::Facts now = facts();
    const connection::State state = connection::stateOf(now);

    ConnectionRoad::State stages;
    stages.steam = deps_.steam.steamRunning();
    stages.steamVR = deps_.steam.steamVRRunning() && !stopped_;
    stages.server = now.server;
    stages.headset = now.found || now.connected;
    stages.linked = state == connection::State::Connected;
    deps_.status.set(state, stages.headset);
    deps_.road.update(stages, deps_.clock.now());
    deps_.facts.reached = deps_.road.firstMissing();
    deps_.facts.wired = now.wired;
}

connection::Facts ConnectionTracker::facts() const
{
    connection::Facts facts = deps_.flow.facts(kind_);
    if (stopped_)
        facts.server = false;
    if (facts.wired) {
        // adb finds it, and the streaming server need not know its name.
        facts.found = deps_.usb.serial().has_value();
        facts.wanted = facts.found;
    }
    return facts;
}

void ConnectionTracker::linkChanged(LinkKind kind)
{
    kind_ = kind;
    deps_.flow.awaitReport();
    update();
}

void ConnectionTracker::steamVRStopped()
{
    stopped_ = true;
    deps_.flow.awaitReport();
    update();
}

void ConnectionTracker::steamVRStarted()
{
    stopped_ = false;
    update();
}
