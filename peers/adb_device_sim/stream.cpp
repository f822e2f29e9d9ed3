#include "peers/adb_device_sim/stream.h"

#include <QTcpSocket>

#include <utility>

namespace {

constexpr int longestPiece = 4096;

} // namespace

Stream::Stream(quint32 id, std::function<void(const Message &)> send, QObject *parent)
    : QObject(parent), id_(id), send_(std::move(send))
{
}

void Stream::join(QTcpSocket *socket)
{
    socket_ = socket;
    socket->setParent(this);
    connect(socket, &QTcpSocket::readyRead, this, [this] { write(socket_->readAll()); });
    connect(socket, &QTcpSocket::disconnected, this, &Stream::close);
    if (socket->bytesAvailable() > 0)
        write(socket->readAll());
}

void Stream::write(const QByteArray &bytes)
{
    waiting_ += bytes;
    sendNext();
}

void Stream::close()
{
    closing_ = true;
    sendNext();
}

void Stream::onOkay(quint32 otherId)
{
    otherId_ = otherId;
    ready_ = true;
    sendNext();
}

void Stream::onWrite(const QByteArray &bytes)
{
    if (socket_)
        socket_->write(bytes);
    send_({Message::Okay, id_, otherId_, {}});
}

void Stream::sendNext()
{
    if (!ready_)
        return;
    if (!waiting_.isEmpty()) {
        ready_ = false;
        send_({Message::Write, id_, otherId_, waiting_.left(longestPiece)});
        waiting_.remove(0, longestPiece);
    } else if (closing_) {
        closing_ = false;
        ready_ = false;
        send_({Message::Close, id_, otherId_, {}});
        emit closed(id_);
    }
}
