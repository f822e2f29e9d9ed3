// Somebody who takes requests in the clear and ends the connection.
#pragma once

#include <QTcpServer>
#include <QTcpSocket>

// Closes without an answer, or after a part of one.
class SilentPeer : public QTcpServer
{
    Q_OBJECT

public:
    explicit SilentPeer(const QByteArray &said) : said_(said)
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *const socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        });
    }
    QString base() const { return QStringLiteral("http://127.0.0.1:%1").arg(serverPort()); }

    int requests = 0;

private:
    void read(QTcpSocket *socket)
    {
        // The whole of it: to close before that would reset the connection.
        const QByteArray request = socket->property("request").toByteArray() + socket->readAll();
        socket->setProperty("request", request);
        const int head = request.indexOf("\r\n\r\n");
        const int at = request.indexOf("Content-Length: ");
        const int size = request.mid(at + 16, request.indexOf('\r', at) - at - 16).toInt();
        if (head < 0 || request.size() < head + 4 + size)
            return;
        ++requests;
        socket->write(said_);
        socket->disconnectFromHost();
    }

    const QByteArray said_;
};
