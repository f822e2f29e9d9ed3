#include "cloud/network.h"

#include "cloud/exchange.h"

#include <QNetworkProxyFactory>
#include <QNetworkProxyQuery>

#include <algorithm>

namespace cloud {

namespace {

QNetworkProxy proxyFor(const QUrl &url, QNetworkProxyFactory *factory)
{
    if (!factory)
        return QNetworkProxy::NoProxy;
    const bool isPlain = url.scheme() == QLatin1String("http");
    const auto proxies = factory->queryProxy(QNetworkProxyQuery(url));
    const auto suits = [isPlain](const QNetworkProxy &proxy) {
        return isPlain || proxy.type() == QNetworkProxy::NoProxy ||
               proxy.capabilities().testFlag(QNetworkProxy::TunnelingCapability);
    };
    const auto found = std::find_if(proxies.begin(), proxies.end(), suits);
    return found == proxies.end() ? QNetworkProxy(QNetworkProxy::NoProxy) : *found;
}

} // namespace

Network::Network(QObject *parent) : QNetworkAccessManager(parent) {}

Network::~Network()
{
    qDeleteAll(findChildren<QNetworkReply *>(QString(), Qt::FindDirectChildrenOnly));
}

QNetworkReply *Network::createRequest(Operation operation, const QNetworkRequest &request,
                                      QIODevice *body)
{
    return new Exchange(operation, request, body ? body->readAll() : QByteArray(),
                        proxyFor(request.url(), proxyFactory()), this);
}

} // namespace cloud
