// Where the connection stands, for the pages.
#pragma once

#include "controller/connection_state.h"

#include <QObject>

// A value that pages bind; whoever knows sets it. GUI thread.
class ConnectionStatus : public QObject
{
    Q_OBJECT
    Q_PROPERTY(connection::State state READ state NOTIFY changed)
    // There is a headset on the cable, or one is listed.
    Q_PROPERTY(bool headsetFound READ headsetFound NOTIFY changed)

public:
    using QObject::QObject;

    connection::State state() const { return state_; }
    bool headsetFound() const { return headsetFound_; }

    void set(connection::State state, bool headsetFound);

signals:
    void changed();

private:
    connection::State state_ = connection::State::NoServer;
    bool headsetFound_ = false;
};
