// The other end of the control link in a test: a blocking TCP client.
#pragma once

#include "tests/support/free_port.h"

#include <QDeadlineTimer>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpSocket>

// Every call waits for what it says, ten seconds at most.
class Peer
{
public:
    static constexpr int limit = 10000;

    Peer() { socket_.setProxy(QNetworkProxy::NoProxy); }

    bool connectTo(int port, const QString &from = QString())
    {
        if (!from.isEmpty() && !socket_.bind(QHostAddress(from)))
            return false;
        socket_.connectToHost(QHostAddress(QHostAddress::LocalHost), static_cast<quint16>(port));
        return socket_.waitForConnected(limit);
    }

    bool send(const QByteArray &bytes)
    {
        socket_.write(bytes);
        while (socket_.bytesToWrite() > 0) {
            if (!socket_.waitForBytesWritten(limit))
                return false;
        }
        return true;
    }

    // The next `size` bytes; fewer when they do not come.
    QByteArray receive(int size)
    {
        while (socket_.bytesAvailable() < size && socket_.waitForReadyRead(limit)) {
        }
        return socket_.read(size);
    }

    // The next text up to and without its NUL; a null array when none comes.
    QByteArray receiveText()
    {
        for (;;) {
            const int end = received_.indexOf('\0');
            if (end >= 0) {
                QByteArray text = received_.left(end);
                received_.remove(0, end + 1);
                return text;
            }
            if (socket_.bytesAvailable() == 0 && !socket_.waitForReadyRead(limit))
                return {};
            received_ += socket_.readAll();
        }
    }

    // Whether the server says nothing for so long.
    bool isSilentFor(int milliseconds)
    {
        return received_.isEmpty() && socket_.bytesAvailable() == 0 &&
               !socket_.waitForReadyRead(milliseconds) &&
               socket_.error() == QAbstractSocket::SocketTimeoutError;
    }

    // Says "Hello" and waits for the answer: afterwards the server has seen
    // everything that was sent before.
    bool greet() { return send("Hello\n") && receiveText() == "HHHH, You can see me!\n"; }

    // Whether the server says this text, whatever it says before, which is dropped.
    bool waitForText(const QByteArray &wanted)
    {
        const QDeadlineTimer deadline(limit);
        QByteArray text = receiveText();
        while (!text.isNull() && text != wanted && !deadline.hasExpired())
            text = receiveText();
        return text == wanted;
    }

    // As greet(), of a server that says other things meanwhile.
    bool isAnswered() { return send("Hello\n") && waitForText("HHHH, You can see me!\n"); }

    // Whether the server ends the connection.
    bool waitForEnd()
    {
        const QDeadlineTimer deadline(limit);
        while (socket_.state() == QAbstractSocket::ConnectedState && !deadline.hasExpired()) {
            socket_.readAll();
            if (!socket_.waitForReadyRead(limit))
                break;
        }
        return socket_.error() == QAbstractSocket::RemoteHostClosedError;
    }

    void close() { socket_.abort(); }

    QTcpSocket &socket() { return socket_; }

private:
    QTcpSocket socket_;
    QByteArray received_;
};
