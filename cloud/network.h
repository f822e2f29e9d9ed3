// What carries the requests to the vendor cloud.
#pragma once

#include <QNetworkAccessManager>

namespace cloud {

// Sends each request once, on a connection and a thread of its own: no failure of
// one touches another, and none is repeated when its connection ends without an
// answer, as Qt's own would be four times. Speaks HTTP and HTTPS; the answer to a
// request of cloud::request() is bounded, its head too. Requests take what
// proxyFactory() says; no redirect is followed, no cookie kept, nothing unpacked.
// Replies belong to it; one that goes gives its connection up.
class Network : public QNetworkAccessManager
{
    Q_OBJECT

public:
    explicit Network(QObject *parent = nullptr);
    ~Network() override;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *body) override;
};

} // namespace cloud
