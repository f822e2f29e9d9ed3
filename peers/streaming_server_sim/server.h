// The streaming server's part in the conversation with the assistant.
#pragma once

#include "peers/streaming_server_sim/connection.h"
#include "peers/streaming_server_sim/headsets.h"
#include "peers/streaming_server_sim/options.h"
#include "peers/streaming_server_sim/record.h"
#include "peers/streaming_server_sim/usb_headset.h"

#include <QByteArray>
#include <QObject>

#include <functional>

// Lives on the main thread.
class Server : public QObject
{
    Q_OBJECT

public:
    Server(const Options &options, Record &record);

    void start();

signals:
    // The program has nothing left to do.
    void finished(int exitCode);

private:
    void planHeadset(const HeadsetOption &headset);
    void at(int milliseconds, const std::function<void()> &action);
    void opened();
    void answer(const QByteArray &text);
    void link(const QString &serial, const QString &address);
    void unlink(const QString &serial, const QString &address);
    void wantRestart();

    const Options options_;
    Record &record_;
    Connection connection_;
    Headsets headsets_;
    UsbHeadset usb_;
    bool restartWanted_ = false; // and not yet said
    bool wasConnected_ = false;
};
