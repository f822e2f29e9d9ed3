#include "cloud/cloud_request.h"

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

constexpr qint64 underWay = 1 << 18; // bytes

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

std::shared_ptr<const QByteArray> collectBody(QNetworkReply *reply, qint64 most)
{
    // What Qt holds for us is held in the pieces in which it came, and a server
    // may choose them small. So little is left to it.
    reply->setReadBufferSize(underWay);
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

} // namespace cloud
