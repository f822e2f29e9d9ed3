#include "peers/cloud_sim/sending.h"

#include "peers/cloud_sim/pattern.h"

#include <QSslSocket>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 pieceSize = 1 << 18;
constexpr qint64 highWater = 1 << 20; // what may wait to be taken

QByteArray reasonOf(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 404:
        return "Not Found";
    case 500:
        return "Internal Server Error";
    default:
        return status >= 300 && status < 400 ? "Elsewhere" : "Other";
    }
}

} // namespace

Sending::Sending(Answer answer, QSslSocket *socket, QObject *parent)
    : QObject(parent), answer_(std::move(answer)), socket_(socket),
      size_(answer_.size >= 0 ? answer_.size : answer_.body.size())
{
    gap_.setSingleShot(true);
    connect(&gap_, &QTimer::timeout, this, [this] {
        waits_ = false;
        writeOn();
    });
    connect(socket_, &QSslSocket::encryptedBytesWritten, this, &Sending::writeOn);
}

QByteArray Sending::head() const
{
    QByteArray text =
        "HTTP/1.1 " + QByteArray::number(answer_.status) + ' ' + reasonOf(answer_.status) + "\r\n";
    for (const auto &header : answer_.headers)
        text += header.first + ": " + header.second + "\r\n";
    if (answer_.chunked)
        text += "Transfer-Encoding: chunked\r\n";
    else if (answer_.length && !answer_.endless)
        text += "Content-Length: " + QByteArray::number(size_) + "\r\n";
    else
        text += "Connection: close\r\n";
    return text + "\r\n";
}

QByteArray Sending::part(qint64 from, qint64 size) const
{
    if (answer_.size >= 0)
        return pattern(from, size);
    return answer_.body.mid(static_cast<int>(from % std::max<qint64>(1, size_)),
                            static_cast<int>(size));
}

void Sending::start()
{
    if (!answer_.raw.isEmpty()) {
        socket_->write(answer_.raw);
        if (answer_.endless) {
            writeOn();
            return;
        }
        ended_ = true;
        emit finished(false);
        return;
    }
    socket_->write(head());
    writeOn();
}

void Sending::writeOn()
{
    const qint64 last = answer_.cutAfter >= 0 ? std::min(answer_.cutAfter, size_) : size_;
    const qint64 whole = (size_ + answer_.pieces - 1) / std::max(1, answer_.pieces);
    while (!ended_ && !waits_ &&
           socket_->encryptedBytesToWrite() + socket_->bytesToWrite() < highWater) {
        if (!answer_.endless && sent_ >= last) {
            end();
            return;
        }
        const qint64 at = answer_.endless ? sent_ % size_ : sent_;
        const qint64 left = answer_.endless ? size_ - at : last - sent_;
        const qint64 most = answer_.pieces > 1 ? whole : pieceSize;
        const QByteArray piece = part(at, std::min(left, most));
        sent_ += piece.size();
        writePiece(piece);
        if (answer_.pieces > 1 && sent_ < last) {
            waits_ = true;
            gap_.start(answer_.gap);
        }
    }
}

void Sending::writePiece(const QByteArray &piece)
{
    if (answer_.chunked)
        socket_->write(QByteArray::number(piece.size(), 16) + "\r\n" + piece + "\r\n");
    else
        socket_->write(piece);
    socket_->flush();
}

void Sending::end()
{
    ended_ = true;
    const bool isCut = answer_.cutAfter >= 0 && answer_.cutAfter < size_;
    if (answer_.chunked && !isCut)
        socket_->write("0\r\n\r\n");
    emit finished(!isCut && (answer_.length || answer_.chunked));
}
