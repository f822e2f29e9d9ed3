#include "peers/streaming_server_sim/connection.h"

#include <QHostAddress>
#include <QNetworkProxy>

namespace {

// Real time: a try costs next to nothing.
constexpr int retryInterval = 100;
// Long enough for the other side to read a piece before the next one comes.
constexpr int pieceInterval = 5;

} // namespace

Connection::Connection(const Options &options, Record &record) : options_(options), record_(record)
{
    socket_.setProxy(QNetworkProxy::NoProxy);
    retryTimer_.setSingleShot(true);
    connect(&retryTimer_, &QTimer::timeout, this, &Connection::open);
    connect(&pieceTimer_, &QTimer::timeout, this, &Connection::sendPiece);
    connect(&socket_, &QTcpSocket::connected, this, &Connection::connected);
    connect(&socket_, &QTcpSocket::disconnected, this, &Connection::lost);
    connect(&socket_, &QTcpSocket::readyRead, this, &Connection::read);
    connect(&socket_, &QTcpSocket::errorOccurred, this, [this] {
        // An end of a connection that was open is told by disconnected().
        if (!wasOpen_)
            retry();
    });
    alone_.start();
}

Connection::~Connection()
{
    // It tells of its end while it is destroyed, when there is nobody to tell.
    socket_.disconnect(this);
}

void Connection::open()
{
    wasOpen_ = false;
    socket_.connectToHost(QHostAddress(QHostAddress::LocalHost), options_.port);
}

void Connection::connected()
{
    wasOpen_ = true;
    saidAlone_ = false;
    socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
    record_.did(QStringLiteral("connected"));
    emit opened();
}

void Connection::lost()
{
    record_.did(QStringLiteral("disconnected"));
    incoming_.clear();
    outgoing_.clear();
    heldBack_.clear();
    pieceTimer_.stop();
    alone_.start();
    if (options_.exitAfterDisconnect)
        emit ended();
    else
        retryTimer_.start(retryInterval);
}

void Connection::retry()
{
    if (!saidAlone_)
        record_.did(QStringLiteral("nobody listens"));
    saidAlone_ = true;
    if (options_.giveUp > 0 && alone_.hasExpired(options_.real(options_.giveUp))) {
        record_.did(QStringLiteral("gave up"));
        emit ended();
        return;
    }
    retryTimer_.start(retryInterval);
}

void Connection::read()
{
    incoming_ += socket_.readAll();
    for (int end; (end = incoming_.indexOf('\0')) >= 0;) {
        const QByteArray text = incoming_.left(end);
        incoming_.remove(0, end + 1);
        record_.received(text);
        emit received(text);
    }
}

void Connection::send(const QByteArray &line)
{
    if (!isOpen())
        return;
    record_.sent(line);
    transmit(line + '\n');
}

void Connection::reply(const QByteArray &line)
{
    heldBack_.append(line);
    if (heldBack_.size() < options_.join)
        return;
    QByteArray packet;
    for (const QByteArray &held : qAsConst(heldBack_)) {
        record_.sent(held);
        packet += held + '\n';
    }
    heldBack_.clear();
    transmit(packet);
}

void Connection::transmit(const QByteArray &bytes)
{
    if (options_.split == 0) {
        socket_.write(bytes);
        socket_.flush();
        return;
    }
    outgoing_ += bytes;
    if (!pieceTimer_.isActive()) {
        sendPiece();
        pieceTimer_.start(pieceInterval);
    }
}

void Connection::sendPiece()
{
    if (outgoing_.isEmpty()) {
        pieceTimer_.stop();
        return;
    }
    socket_.write(outgoing_.left(options_.split));
    socket_.flush();
    outgoing_.remove(0, options_.split);
}
