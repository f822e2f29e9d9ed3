// One of the streams that share the connection to adb's server.
#pragma once

#include "peers/adb_device_sim/message.h"

#include <QByteArray>
#include <QObject>

#include <functional>

class QTcpSocket;

// Sends one piece at a time and waits for the other side to be ready for the
// next. With a socket, what arrives on one goes out on the other.
class Stream : public QObject
{
    Q_OBJECT

public:
    // `send` puts a message onto the connection.
    Stream(quint32 id, std::function<void(const Message &)> send, QObject *parent);

    quint32 id() const { return id_; }
    // The socket belongs to the stream from now on.
    void join(QTcpSocket *socket);
    void write(const QByteArray &bytes);
    // Closes as soon as everything has gone out.
    void close();

    // The other side's messages.
    void onOkay(quint32 otherId);
    void onWrite(const QByteArray &bytes);

signals:
    void closed(quint32 id);

private:
    void sendNext();

    const quint32 id_;
    quint32 otherId_ = 0; // 0: not told yet
    const std::function<void(const Message &)> send_;
    QByteArray waiting_;
    bool ready_ = false; // the other side is
    bool closing_ = false;
    QTcpSocket *socket_ = nullptr;
};
