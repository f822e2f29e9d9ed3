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

// A request with the TLS settings of the vendor cloud.
QNetworkRequest request(const QUrl &url, PeerCheck check);

// Whether the answer points elsewhere. Nobody follows it there.
bool isRedirect(const QNetworkReply &reply);

// Lets only so much of an answer be on its way to whoever reads it. For a new
// reply. What Qt holds it holds in the pieces in which it came; a server may
// choose them small, and many are slow to read.
void limitReadBuffer(QNetworkReply *reply, qint64 bytes);

// The body of an answer as it comes in; whole when the reply has finished. An
// answer of more than `most` bytes is aborted, and nothing of it is kept: so no
// server can fill the memory.
std::shared_ptr<const QByteArray> collectBody(QNetworkReply *reply, qint64 most);

// Drops all requests of `network` with their replies, of which `receiver` hears
// no more, and closes its connections. On their thread.
void abortRequests(QNetworkAccessManager &network, QObject &receiver);

} // namespace cloud
