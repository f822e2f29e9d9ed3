#include "peers/streaming_server_sim/usb_headset.h"

#include <QHostAddress>
#include <QNetworkProxy>

UsbHeadset::UsbHeadset(const Options &options) : options_(options)
{
    socket_.setProxy(QNetworkProxy::NoProxy);
    connect(&socket_, &QTcpSocket::readyRead, this, [this] { greeting_ += socket_.readAll(); });
    connect(&socket_, &QTcpSocket::disconnected, this, [this] { greeting_.clear(); });
}

UsbHeadset::~UsbHeadset()
{
    // It tells of its end while it is destroyed, when there is nobody to tell.
    socket_.disconnect(this);
}

bool UsbHeadset::ask()
{
    if (options_.usbPort == 0)
        return options_.usb;
    if (socket_.state() == QAbstractSocket::UnconnectedState)
        socket_.connectToHost(QHostAddress(QHostAddress::LocalHost),
                              static_cast<quint16>(options_.usbPort));
    return greeting_.startsWith("HEADSET\n");
}
