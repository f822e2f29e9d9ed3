#include "base/background.h"
#include "base/manual_clock.h"
#include "base/threads.h"
#include "cloud/http_manager.h"
#include "cloud/orb_update.h"
#include "cloud/proxy_finder.h"
#include "tests/support/gate.h"
#include "tests/support/test_case.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

#include <atomic>
#include <memory>

namespace {

const QUrl cloudUrl("http://cloud.example/a");

// Stands for the proxy of a company: knows who was to be reached through it.
class SmallProxy : public QTcpServer
{
    Q_OBJECT

public:
    SmallProxy()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            QTcpSocket *const socket = nextPendingConnection();
            const auto request = std::make_shared<QByteArray>();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, request] {
                request->append(socket->readAll());
                if (!isWhole(*request))
                    return;
                socket->disconnect(this);
                asked.append(QString::fromLatin1(*request).section("\r\n", 0, 0));
                socket->write("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n"
                              "Connection: close\r\n\r\n{}");
                socket->disconnectFromHost();
            });
        });
    }
    QNetworkProxy proxy() const { return {QNetworkProxy::HttpProxy, "127.0.0.1", serverPort()}; }

    QStringList asked;

private:
    // Closing before the body was read resets the connection, which may cost the
    // client the answer: it would ask again, or wait for ever.
    static bool isWhole(const QByteArray &request)
    {
        const int head = request.indexOf("\r\n\r\n");
        const int at = request.indexOf("Content-Length: ");
        const int body =
            at < 0 ? 0 : request.mid(at + 16, request.indexOf('\r', at) - at - 16).toInt();
        return head >= 0 && request.size() >= head + 4 + body;
    }
};

} // namespace

class TestProxyFinder : public TestCase
{
    Q_OBJECT

    QNetworkAccessManager network_;
    int found_ = 0;

    std::function<void()> count()
    {
        return [this] { ++found_; };
    }

    // What was handed to other threads before has most likely begun afterwards.
    void letOthersRun()
    {
        Background other("a test");
        other.run([] { return Background::Result(); });
        QTRY_VERIFY(!other.isBusy());
    }

private slots:
    void init()
    {
        TestCase::init();
        found_ = 0;
    }

    void withoutAQuestionEverythingIsReachedDirectlyAndAtOnce()
    {
        ProxyFinder finder(network_, {});
        finder.hold(); // there is nothing to hold
        finder.find(cloudUrl, this, count());
        QCOMPARE(found_, 1);
        QCOMPARE(network_.proxyFactory()->queryProxy(QNetworkProxyQuery(cloudUrl)),
                 QList<QNetworkProxy>{QNetworkProxy::NoProxy});
    }

    void theSystemIsAskedOnAnotherThreadOncePerHost()
    {
        std::atomic<int> asked{0};
        std::atomic<bool> elsewhere{true};
        const QThread *const here = QThread::currentThread();
        const QNetworkProxy proxy(QNetworkProxy::HttpProxy, "proxy.example", 8080);
        ProxyFinder finder(network_, [&](const QUrl &url) {
            ++asked;
            elsewhere = elsewhere && QThread::currentThread() != here;
            return url.host() == cloudUrl.host() ? ProxyFinder::Proxies{proxy}
                                                 : ProxyFinder::Proxies{};
        });
        finder.find(cloudUrl, this, count());
        finder.find(QUrl("http://cloud.example/b"), this, count());
        finder.find(QUrl("http://files.example/c"), this, count());
        QCOMPARE(found_, 0);
        QTRY_COMPARE(found_, 3);
        QCOMPARE(asked, 2);
        QVERIFY(elsewhere);
        auto *const factory = network_.proxyFactory();
        QCOMPARE(factory->queryProxy(QNetworkProxyQuery(cloudUrl)), QList<QNetworkProxy>{proxy});
        QCOMPARE(factory->queryProxy(QNetworkProxyQuery(QUrl("http://files.example/x"))),
                 QList<QNetworkProxy>{QNetworkProxy::NoProxy});
    }

    void whatIsKnownIsUsedAtOnceAndAskedAgainForTheNextTime()
    {
        std::atomic<int> asked{0};
        ProxyFinder finder(network_, [&](const QUrl &) {
            const auto port = static_cast<quint16>(8080 + asked++);
            return ProxyFinder::Proxies{{QNetworkProxy::HttpProxy, "proxy.example", port}};
        });
        finder.find(cloudUrl, this, count());
        QTRY_COMPARE(found_, 1);
        const auto port = [this] {
            return int(network_.proxyFactory()->queryProxy(QNetworkProxyQuery(cloudUrl))[0].port());
        };
        QCOMPARE(port(), 8080);
        finder.find(cloudUrl, this, count());
        QCOMPARE(found_, 2);
        QTRY_COMPARE(port(), 8081);
    }

    void withoutAThreadItIsAsWithoutAProxyUntilThereIsOne()
    {
        const QNetworkProxy proxy(QNetworkProxy::HttpProxy, "proxy.example", 8080);
        ProxyFinder finder(network_, [&](const QUrl &) { return ProxyFinder::Proxies{proxy}; });
        const auto known = [this] {
            return network_.proxyFactory()->queryProxy(QNetworkProxyQuery(cloudUrl));
        };
        {
            const threads::NoneToHave none;
            announce("no thread for proxies: Resource temporarily unavailable");
            finder.find(cloudUrl, this, count());
            QCOMPARE(found_, 0); // whoever asks is not ready to go on
            QCoreApplication::processEvents();
            QCOMPARE(found_, 1);
            QCOMPARE(known(), QList<QNetworkProxy>{QNetworkProxy::NoProxy});
        }
        finder.find(cloudUrl, this, count());
        QCOMPARE(found_, 2);
        QTRY_COMPARE(known(), QList<QNetworkProxy>{proxy});
        QCOMPARE(threads::missing(), QStringList());
    }

    void whoeverIsGoneIsNotCalled()
    {
        Gate gate;
        ProxyFinder finder(network_, [&](const QUrl &) {
            gate.pass();
            return ProxyFinder::Proxies{};
        });
        auto gone = std::make_unique<QObject>();
        finder.find(cloudUrl, gone.get(), [] { QFAIL("it is gone"); });
        finder.find(cloudUrl, this, count());
        gone.reset();
        gate.open();
        QTRY_COMPARE(found_, 1);
    }

    void nothingIsAskedWhileItIsHeld()
    {
        std::atomic<int> asked{0};
        ProxyFinder finder(network_, [&](const QUrl &) {
            ++asked;
            return ProxyFinder::Proxies{};
        });
        finder.hold();
        finder.find(cloudUrl, this, count());
        finder.find(QUrl("http://files.example/"), this, count());
        letOthersRun();
        QCOMPARE(asked, 0);
        QCOMPARE(found_, 0);
        finder.release();
        QTRY_COMPARE(found_, 2);
        QCOMPARE(asked, 2);
    }

    void updatesAreAskedForThroughTheProxyWhenTheWindowIsThere()
    {
        SmallProxy proxy;
        std::atomic<int> asked{0};
        ORBUpdate::Dependencies dependencies;
        dependencies.host = "cloud.example";
        dependencies.dataDir = path("data");
        dependencies.askForProxies = [&](const QUrl &) {
            ++asked;
            return ProxyFinder::Proxies{proxy.proxy()};
        };
        ORBUpdate update(dependencies);
        letOthersRun();
        QCOMPARE(asked, 0);
        update.goOnline();
        QTRY_COMPARE(proxy.asked.size(), 2);
        QCOMPARE(proxy.asked[0], QString("CONNECT cloud.example:443 HTTP/1.1"));
        QCOMPARE(asked, 1);
        update.abortRequests();
    }

    void theLastEventsGoThroughTheProxyToo()
    {
        SmallProxy proxy;
        ManualClock clock;
        HttpManager::Dependencies dependencies{clock, [] { return QJsonObject(); },
                                               "http://cloud.example"};
        dependencies.askForProxies = [&](const QUrl &) {
            return ProxyFinder::Proxies{proxy.proxy()};
        };
        HttpManager manager(dependencies);
        manager.addEvent("id", {});
        manager.sendEvents(false);
        QCOMPARE(proxy.asked,
                 QStringList("POST http://cloud.example/vrmcsys/datacenter/streaming_data_upload "
                             "HTTP/1.1"));
    }

    void aSystemThatDoesNotSayCostsTheEndFiveSecondsAtMost()
    {
        const auto gate = std::make_shared<Gate>();
        ManualClock clock;
        HttpManager::Dependencies dependencies{clock, [] { return QJsonObject(); },
                                               "http://cloud.example"};
        dependencies.askForProxies = [gate](const QUrl &) {
            gate->pass();
            return ProxyFinder::Proxies{};
        };
        announce(
            QStringLiteral("error evnetid: [{\"defaultData\":{},\"eventId\":\"id\",\"extraData\":"
                           "{},\"timestamp\":%1}] json parse fail")
                .arg(clock.epochMilliseconds()));
        bool wasWaiting = false;
        {
            HttpManager manager(dependencies);
            manager.addEvent("id", {});
            const auto waitForLong = [&] {
                clock.advance(4999);
                wasWaiting = logged().isEmpty();
                clock.advance(1);
            };
            QMetaObject::invokeMethod(this, waitForLong, Qt::QueuedConnection);
            manager.sendEvents(false);
            QVERIFY(wasWaiting);
            QCOMPARE(logged().size(), 1);
            gate->open();
        }
    }
};

KOLM_TEST_MAIN(TestProxyFinder)
#include "tst_proxy_finder.moc"
