// Says where the connection stands, whenever something may have changed it.
#pragma once

#include "config/link_kind.h"
#include "controller/connection_state.h"

#include <QObject>

class Clock;
class ConnectionFlow;
class ConnectionStages;
class ConnectionStatus;
class SteamWatch;
class UsbHeadset;
struct Facts;

// Takes the facts from those who keep them, and sets status, stages and what
// the checks know of both by them. The pages' older properties change when a poll finds something;
// this one knows what the program itself did as well. GUI thread.
class ConnectionTracker : public QObject
{
    Q_OBJECT

public:
    // Everything outlives the object.
    struct Dependencies
    {
        Clock &clock;
        const SteamWatch &steam;
        ConnectionFlow &flow;
        const UsbHeadset &usb;
        ConnectionStages &stages;
        ConnectionStatus &status;
        Facts &facts; // of the checks: how far the connection has come, and by what
    };

    explicit ConnectionTracker(const Dependencies &dependencies, QObject *parent = nullptr);

    // Something that the state rests on may have changed.
    void update();

    // The link became another one: what was reported over the old one counts
    // no more.
    void linkChanged(LinkKind kind);
    // We stopped SteamVR, or started it. It takes the streaming server with it,
    // and the polls notice that late.
    void steamVRStopped();
    void steamVRStarted();

private:
    connection::Facts facts() const;

    Dependencies deps_;
    LinkKind kind_ = LinkKind::NotChosen;
    bool stopped_ = false; // by us, and nobody has seen it run since
};
