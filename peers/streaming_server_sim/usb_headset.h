// The headset on the USB cable.
#pragma once

#include "peers/streaming_server_sim/options.h"

#include <QObject>
#include <QTcpSocket>

// Either there because the options say so, or reached through a port of this
// PC that leads to it: the headset greets there with "HEADSET" and a line feed.
class UsbHeadset : public QObject
{
    Q_OBJECT

public:
    explicit UsbHeadset(const Options &options);
    ~UsbHeadset() override;

    // Whether it is reached right now; if not, tries to, for the next question.
    bool ask();

private:
    const Options options_;
    QTcpSocket socket_;
    QByteArray greeting_;
};
