#include "controller/connection_tracker.h"

#include "base/clock.h"
#include "checks/facts.h"
#include "checks/steam_watch.h"
#include "controller/connection_flow.h"
#include "controller/connection_stages.h"
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

    ConnectionStages::Reached reached;
    reached.steam = deps_.steam.steamRunning();
    reached.steamVR = deps_.steam.steamVRRunning() && !stopped_;
    reached.server = now.server;
    reached.headset = now.found || now.connected;
    reached.linked = state == connection::State::Connected;
    deps_.status.set(state, reached.headset);
    deps_.status.setServerProgram(now.server ? deps_.flow.serverProgram() : QString());
    deps_.stages.update(reached, deps_.clock.now());
    deps_.facts.reached = deps_.stages.firstMissing();
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
