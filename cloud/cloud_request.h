// What all requests to the vendor cloud and all its replies have in common.
#pragma once

#include <QByteArray>
#include <QNetworkRequest>
#include <QUrl>

#include <memory>

class QNetworkAccessManager;
class QNetworkReply;
class QObject;

namespace cloud {

enum class PeerCheck {
    Off, // the certificate is not looked at
    On   // only who has a certificate for the host's name is spoken to
};

// What this program was built with (KOLM_CLOUD_VERIFY_PEER).
PeerCheck builtPeerCheck();

// The longest answer to most requests.
constexpr qint64 usualBody = 1LL << 20; // bytes

// A request with the TLS settings of the vendor cloud. An answer of more than
// `longestBody` bytes is given up, and nothing of it is kept: so no server can
// fill the memory.
QNetworkRequest request(const QUrl &url, PeerCheck check, qint64 longestBody = usualBody);

// How long the answer to a request() may be; that to any other is empty.
qint64 longestBody(const QNetworkRequest &request);

// Whether the answer points elsewhere. Nobody follows it there.
bool isRedirect(const QNetworkReply &reply);

// The body of an answer as it comes in; whole when the reply has finished, and
// empty when it was given up.
std::shared_ptr<const QByteArray> collectBody(QNetworkReply *reply);

// Drops all requests of `network` with their replies, of which `receiver` hears
// no more. On their thread.
void abortRequests(QNetworkAccessManager &network, QObject &receiver);

} // namespace cloud
