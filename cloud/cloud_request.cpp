#include "cloud/cloud_request.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslConfiguration>
#include <QSslSocket>

namespace cloud {

namespace {

// The range that starts lowest. Windows' own TLS would take this value for TLS
// 1.0 alone, which hardly any server speaks any more.
QSsl::SslProtocol widestProtocol()
{
    const bool openSsl = QSslSocket::sslLibraryVersionString().startsWith(QLatin1String("OpenSSL"));
    return openSsl ? QSsl::TlsV1SslV3 : QSsl::TlsV1_0OrLater;
}

} // namespace

PeerCheck builtPeerCheck()
{
#ifdef KOLM_CLOUD_VERIFY_PEER
    return PeerCheck::On;
#else
    return PeerCheck::Off;
#endif
}

QNetworkRequest request(const QUrl &url, PeerCheck check)
{
    QNetworkRequest request(url);
    QSslConfiguration tls = request.sslConfiguration();
    tls.setPeerVerifyMode(check == PeerCheck::On ? QSslSocket::VerifyPeer : QSslSocket::VerifyNone);
    tls.setProtocol(check == PeerCheck::On ? QSsl::TlsV1_2OrLater : widestProtocol());
    request.setSslConfiguration(tls);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    return request;
}

bool isRedirect(const QNetworkReply &reply)
{
    switch (reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt()) {
    case 301:
    case 302:
    case 303:
    case 305:
    case 307:
    case 308:
        return true;
    default:
        return false;
    }
}

void limitReadBuffer(QNetworkReply *reply, qint64 bytes)
{
    // A request with a body starts with the next turn of the event loop, and
    // what is said to it before that is not heard.
    QMetaObject::invokeMethod(
        reply, [reply, bytes] { reply->setReadBufferSize(bytes); }, Qt::QueuedConnection);
}

std::shared_ptr<const QByteArray> collectBody(QNetworkReply *reply, qint64 most)
{
    // Less of it would slow down a large one.
    limitReadBuffer(reply, most > (1 << 20) ? 1 << 18 : 1 << 16);
    const auto body = std::make_shared<QByteArray>();
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply, body, most] {
        body->append(reply->readAll());
        if (body->size() > most) {
            body->clear();
            reply->abort();
        }
    });
    return body;
}

void abortRequests(QNetworkAccessManager &network, QObject &receiver)
{
    const auto replies = network.findChildren<QNetworkReply *>();
    for (QNetworkReply *reply : replies) {
        reply->disconnect(&receiver);
        delete reply;
    }
    network.clearConnectionCache();
}

} // namespace cloud
