#include "cloud/transfer.h"

#include "cloud/answer_reader.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QHostInfo>
#include <QSslSocket>

#include <utility>

namespace {

constexpr int longestBacklog = 1 << 20; // bytes

struct Failure
{
    QNetworkReply::NetworkError error;
    QString text;
};

Failure failureOf(const QSslSocket &socket, int error, const QUrl &url)
{
    switch (error) {
    case QAbstractSocket::ConnectionRefusedError:
        return {QNetworkReply::ConnectionRefusedError, QStringLiteral("Connection refused")};
    case QAbstractSocket::RemoteHostClosedError:
        return {QNetworkReply::RemoteHostClosedError, QStringLiteral("Connection closed")};
    case QAbstractSocket::HostNotFoundError:
        return {QNetworkReply::HostNotFoundError,
                QStringLiteral("Host %1 not found").arg(url.host())};
    case QAbstractSocket::SocketTimeoutError:
        return {QNetworkReply::TimeoutError, QStringLiteral("Connection timed out")};
    case QAbstractSocket::SslHandshakeFailedError:
        return {QNetworkReply::SslHandshakeFailedError,
                QStringLiteral("SSL handshake failed: ") + socket.errorString()};
    default:
        return {QNetworkReply::UnknownNetworkError, socket.errorString()};
    }
}

} // namespace

Transfer::Transfer(Order order, QObject *listener) : order_(std::move(order)), listener_(listener)
{
}

bool Transfer::asksProxy(const QUrl &url, const QNetworkProxy &proxy)
{
    return url.scheme() == QLatin1String("http") &&
           (proxy.type() == QNetworkProxy::HttpProxy ||
            proxy.type() == QNetworkProxy::HttpCachingProxy);
}

void Transfer::run()
{
    QEventLoop loop; // before the socket, which needs its dispatcher
    {
        const MutexLock lock(mutex_);
        loop_ = &loop;
    }
    QSslSocket socket;
    AnswerReader reader;
    const auto send = [this, &socket] { socket.write(order_.head + order_.body); };
    const bool isPlain = order_.url.scheme() == QLatin1String("http");
    QObject::connect(&socket, &QSslSocket::connected, [this] { addresses_.clear(); });
    if (isPlain)
        QObject::connect(&socket, &QSslSocket::connected, &socket, send);
    else
        QObject::connect(&socket, &QSslSocket::encrypted, &socket, send);
    QObject::connect(&socket, &QSslSocket::readyRead, &socket, [&] {
        if (isOver())
            loop.quit();
        else
            read(socket, reader);
    });
    QObject::connect(&socket, &QSslSocket::errorOccurred, &socket,
                     [&](QAbstractSocket::SocketError error) { fail(socket, reader, error); });
    // Not before the loop runs: leaving it has no effect earlier.
    QMetaObject::invokeMethod(
        &socket,
        [&] {
            if (isOver())
                loop.quit();
            else
                begin(socket);
        },
        Qt::QueuedConnection);
    loop.exec();
    socket.disconnect();
    socket.abort();
    const MutexLock lock(mutex_);
    loop_ = nullptr;
}

bool Transfer::isThroughProxy() const
{
    return order_.proxy.type() != QNetworkProxy::NoProxy &&
           order_.proxy.type() != QNetworkProxy::DefaultProxy;
}

// Whoever is called first, by its addresses.
void Transfer::begin(QSslSocket &socket)
{
    const QString host = isThroughProxy() ? order_.proxy.hostName() : order_.url.host();
    addresses_ = QHostInfo::fromName(host).addresses();
    if (isOver())
        return;
    if (addresses_.isEmpty())
        finish(isThroughProxy() ? QNetworkReply::ProxyNotFoundError
                                : QNetworkReply::HostNotFoundError,
               QStringLiteral("Host %1 not found").arg(host));
    else
        connectNext(socket);
}

void Transfer::connectNext(QSslSocket &socket)
{
    const QString address = addresses_.takeFirst().toString();
    const bool isPlain = order_.url.scheme() == QLatin1String("http");
    const auto port = static_cast<quint16>(order_.url.port(isPlain ? 80 : 443));
    QNetworkProxy proxy = order_.proxy;
    if (asksProxy(order_.url, proxy)) {
        socket.setProxy(QNetworkProxy::NoProxy);
        socket.connectToHost(address, proxy.port());
        return;
    }
    if (isThroughProxy())
        proxy.setHostName(address);
    socket.setProxy(proxy);
    const QString host = isThroughProxy() ? order_.url.host() : address;
    if (isPlain) {
        socket.connectToHost(host, port);
        return;
    }
    socket.setSslConfiguration(order_.tls);
    // The certificate is that of the name.
    socket.connectToHostEncrypted(host, port, order_.url.host());
}

void Transfer::read(QSslSocket &socket, AnswerReader &reader)
{
    const bool hadHead = reader.state() != AnswerReader::State::Head;
    const QByteArray body = reader.feed(socket.readAll());
    bodySize_ += body.size();
    if (bodySize_ > order_.longestBody) {
        finish(QNetworkReply::OperationCanceledError, QStringLiteral("Operation canceled"));
        return;
    }
    {
        MutexLock lock(mutex_);
        if (!hadHead && reader.state() != AnswerReader::State::Head)
            tellHead(reader);
        news_.body += body;
        if (!body.isEmpty())
            tell();
        // Who has no time for it now does not get it piled up.
        while (news_.body.size() > longestBacklog && !isEnded_)
            taken_.wait(lock);
    }
    if (reader.state() == AnswerReader::State::Done)
        finish(QNetworkReply::NoError, {});
    else if (reader.state() == AnswerReader::State::Broken)
        finish(QNetworkReply::ProtocolFailure, QStringLiteral("Data corrupted"));
}

void Transfer::fail(QSslSocket &socket, AnswerReader &reader, int socketError)
{
    if (isOver())
        return;
    if (!addresses_.isEmpty()) {
        // Not from within the socket's own signal.
        QMetaObject::invokeMethod(
            &socket, [this, &socket] { connectNext(socket); }, Qt::QueuedConnection);
        return;
    }
    if (socketError == QAbstractSocket::RemoteHostClosedError) {
        read(socket, reader);
        reader.end();
        if (reader.state() == AnswerReader::State::Done)
            finish(QNetworkReply::NoError, {});
    }
    const Failure failure = failureOf(socket, socketError, order_.url);
    finish(failure.error, failure.text);
}

void Transfer::tellHead(const AnswerReader &reader)
{
    news_.status = reader.status();
    news_.reason = reader.reason();
    news_.length = reader.length();
}

// The first end is the one that counts.
void Transfer::finish(QNetworkReply::NetworkError error, const QString &text)
{
    const MutexLock lock(mutex_);
    if (isEnded_)
        return;
    news_.isOver = true;
    news_.error = error;
    news_.errorText = text;
    tell();
    leave();
}

// Without an event: on Windows none is delivered as long as the socket has news,
// and a server that never stops sees to that.
void Transfer::leave()
{
    isEnded_ = true;
    taken_.notifyAll();
    if (loop_)
        loop_->quit();
}

void Transfer::tell()
{
    if (isTold_ || !listener_)
        return;
    isTold_ = true;
    QCoreApplication::postEvent(listener_, new QEvent(QEvent::User));
}

Transfer::News Transfer::take()
{
    const MutexLock lock(mutex_);
    isTold_ = false;
    News news = news_;
    news_.body.clear();
    taken_.notifyAll();
    return news;
}

void Transfer::cancel()
{
    const MutexLock lock(mutex_);
    listener_ = nullptr;
    news_.body.clear();
    leave();
}

bool Transfer::isOver()
{
    const MutexLock lock(mutex_);
    return isEnded_;
}
