#include "peers/adb_device_sim/device.h"

#include <QTcpSocket>

#include <utility>

Device::Device(Transport::Tell tell) : tell_(std::move(tell))
{
    connect(&listener_, &QTcpServer::newConnection, this, [this] {
        QTcpSocket *socket = listener_.nextPendingConnection();
        if (!socket)
            return;
        transport_ = std::make_unique<Transport>(socket, tell_);
        connect(transport_.get(), &Transport::ended, this, [this] {
            tell_(QStringLiteral("disconnected"));
            if (transport_)
                transport_.release()->deleteLater();
        });
    });
}

QString Device::listen(quint16 port)
{
    return listener_.listen(QHostAddress::LocalHost, port) ? QString() : listener_.errorString();
}
