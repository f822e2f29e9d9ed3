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
    // The program that is connected as the streaming server, by name and process number;
    // empty when nobody knows.
    Q_PROPERTY(QString serverProgram READ serverProgram NOTIFY serverProgramChanged)

public:
    using QObject::QObject;

    connection::State state() const { return state_; }
    bool headsetFound() const { return headsetFound_; }

    QString serverProgram() const { return serverProgram_; }

    void set(connection::State state, bool headsetFound);
    void setServerProgram(const QString &program);

signals:
    void changed();
    void serverProgramChanged();

private:
    connection::State state_ = connection::State::NoServer;
    bool headsetFound_ = false;
    QString serverProgram_;
};
