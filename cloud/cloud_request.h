// What all requests to the vendor cloud and all its replies have in common.
#pragma once

#include <QByteArray>
#include <QNetworkRequest>
#include <QUrl>

class QNetworkReply;

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

// Aborts `reply` as soon as it holds more than `bytes` that nobody has read, so
// that no server can fill the memory.
void limitSize(QNetworkReply *reply, qint64 bytes);

// What there is to read of an answer; nothing after it was aborted.
QByteArray bodyOf(QNetworkReply &reply);

} // namespace cloud
