#include "cloud/proxy_finder.h"

#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkProxyQuery>
#include <QPointer>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

// Nobody who closes the program waits for a network.
constexpr std::chrono::milliseconds patience = 200ms;

} // namespace

// What the network manager asks instead of the system.
class ProxyFinder::Known : public QNetworkProxyFactory
{
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        return hosts.value(query.url().host(), {QNetworkProxy(QNetworkProxy::NoProxy)});
    }

    QHash<QString, Proxies> hosts;
};

ProxyFinder::Proxies ProxyFinder::askSystem(const QUrl &url)
{
    return QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
}

ProxyFinder::ProxyFinder(QNetworkAccessManager &network, Ask ask, QObject *parent)
    : QObject(parent), ask_(std::move(ask)), known_(new Known), background_("proxies", patience)
{
    network.setProxyFactory(known_);
}

ProxyFinder::~ProxyFinder() = default;

void ProxyFinder::find(const QUrl &url, QObject *context, std::function<void()> then)
{
    if (!ask_) {
        then();
        return;
    }
    ask(url);
    if (known_->hosts.contains(url.host())) {
        then();
        return;
    }
    waiting_.push_back({url, [context = QPointer<QObject>(context), then] {
                            if (context)
                                then();
                        }});
}

void ProxyFinder::release()
{
    isHeld_ = false;
    for (const Waiting &one : waiting_)
        ask(one.url);
}

void ProxyFinder::ask(const QUrl &url)
{
    if (isHeld_ || asking_.contains(url.host()))
        return;
    asking_.insert(url.host());
    const bool isAsked = background_.run([this, ask = ask_, url]() -> Background::Result {
        const Proxies proxies = ask(url);
        return [this, host = url.host(), proxies] { onAnswer(host, proxies); };
    });
    // Without a thread it stays as it was, or is as without a proxy. Not at once: whoever
    // asks is not ready to go on here.
    if (!isAsked)
        QMetaObject::invokeMethod(
            this, [this, host = url.host()] { onAnswer(host, known_->hosts.value(host)); },
            Qt::QueuedConnection);
}

void ProxyFinder::onAnswer(const QString &host, const Proxies &proxies)
{
    asking_.remove(host);
    known_->hosts.insert(host, proxies.isEmpty() ? Proxies{QNetworkProxy::NoProxy} : proxies);
    std::vector<Waiting> waiting;
    waiting.swap(waiting_);
    for (Waiting &one : waiting) {
        if (one.url.host() == host)
            one.then();
        else
            waiting_.push_back(std::move(one));
    }
}
