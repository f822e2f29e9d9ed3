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

constexpr auto longestBodyAttribute = QNetworkRequest::User;

} // namespace

PeerCheck builtPeerCheck()
{
#ifdef KOLM_CLOUD_VERIFY_PEER
    return PeerCheck::On;
#else
    return PeerCheck::Off;
#endif
}

QNetworkRequest request(const QUrl &url, PeerCheck check, qint64 longestBody)
{
    QNetworkRequest request(url);
    QSslConfiguration tls = request.sslConfiguration();
    tls.setPeerVerifyMode(check == PeerCheck::On ? QSslSocket::VerifyPeer : QSslSocket::VerifyNone);
    tls.setProtocol(check == PeerCheck::On ? QSsl::TlsV1_2OrLater : widestProtocol());
    request.setSslConfiguration(tls);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(longestBodyAttribute, longestBody);
    return request;
}

qint64 longestBody(const QNetworkRequest &request)
{
    return request.attribute(longestBodyAttribute).toLongLong();
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

std::shared_ptr<const QByteArray> collectBody(QNetworkReply *reply)
{
    const auto body = std::make_shared<QByteArray>();
    QObject::connect(reply, &QNetworkReply::readyRead, reply,
                     [reply, body] { body->append(reply->readAll()); });
    QObject::connect(reply, &QNetworkReply::errorOccurred, reply,
                     [body](QNetworkReply::NetworkError error) {
                         if (error == QNetworkReply::OperationCanceledError)
                             body->clear();
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
}

} // namespace cloud
