#include "tests/link/running_link.h"
#include "tests/support/test_case.h"

namespace {

const QString closed = QStringLiteral(
    "control port: a connection that speaks HTTP is closed, nothing of it is obeyed");

// What a page has a browser send: header lines of the browser's, then the page's own.
const QByteArray post = "POST / HTTP/1.1\r\nHost: 127.0.0.1:9932\r\nConnection: keep-alive\r\n"
                        "Content-Length: 74\r\nOrigin: http://example.com\r\n\r\n"
                        "RESTARTSTEAMVR\nHMDINFOBACK\tdeviceId:D3EVIL~D3EVIL;10.0.0.66;true;x\n"
                        "DeviceConnectBack\ttrue\nHello\n";

// A link and what it did at the wish of those who connected.
struct Obeying
{
    bool nothingWasObeyed() const
    {
        return restarts == 0 && link.manager->deviceId().isEmpty() &&
               !link.manager->isDeviceConnected() && link.manager->hmdInfoList().size() <= 1 &&
               link.echoed().filter("HHHH").isEmpty();
    }

    std::atomic<int> restarts{0};
    const RunningLink link{[this] { ++restarts; }};
};

} // namespace

// A web page may have its reader's browser say what it likes to the port.
class BrowsersTest : public TestCase
{
    Q_OBJECT

private slots:
    void aPostIsNotObeyedWhereverItIsCut()
    {
        Obeying here;
        for (int size = 0; size < post.size(); ++size)
            announce(closed);
        for (int size = 0; size < post.size(); ++size) {
            Peer browser;
            QVERIFY(browser.connectTo(here.link.port));
            QVERIFY(eventually([&] { return here.link.manager->hasClient(); }));
            if (size > 0) {
                browser.socket().write(post.left(size));
                browser.socket().flush();
                // The link has read it, or has not: both are cuts that occur.
                std::this_thread::yield();
            }
            browser.socket().write(post.mid(size));
            browser.socket().flush();
            browser.socket().waitForDisconnected(Peer::limit);
            QCOMPARE(browser.socket().state(), QAbstractSocket::UnconnectedState);
            QVERIFY2(here.nothingWasObeyed(), qPrintable(QString::number(size)));
        }
        QVERIFY(eventually([&] { return loggedCount(closed) == post.size(); }));
        QCOMPARE(logged().size(), post.size()); // not a line of it is logged
    }

    void whatStoodBeforeItInTheSameBatchIsNotObeyedEither()
    {
        Obeying here;
        announce(closed);
        Peer browser;
        QVERIFY(browser.connectTo(here.link.port));
        QVERIFY(browser.send("RESTARTSTEAMVR\nHello\nPOST / HTTP/1.1\r\n"));
        QVERIFY(eventually([&] { return loggedCount(closed) == 1; }));
        QVERIFY(here.nothingWasObeyed());
    }

    void aHeaderIsEnough_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("Host") << QByteArray("x\r\nHost: 127.0.0.1\r\nRESTARTSTEAMVR\n");
        QTest::newRow("unfinished") << QByteArray("RESTARTSTEAMVR\nUser-Agent: ");
        QTest::newRow("a method of its own") << QByteArray("EVIL / HTTP/1.1\r\nRESTARTSTEAMVR\n");
        QTest::newRow("TLS") << QByteArray("\x16\x03\x01\x02", 4);
        QTest::newRow("WebSocket") << QByteArray("GET /RESTARTSTEAMVR HTTP/1.1\r\n");
    }
    void aHeaderIsEnough()
    {
        QFETCH(QByteArray, bytes);
        Obeying here;
        announce(closed);
        Peer browser;
        QVERIFY(browser.connectTo(here.link.port));
        QVERIFY(browser.send(bytes));
        QVERIFY(eventually([&] { return loggedCount(closed) == 1; }));
        QVERIFY(eventually([&] { return !here.link.manager->hasClient(); }));
        QVERIFY(here.nothingWasObeyed());
    }

    void theServerIsServedAfterIt()
    {
        Obeying here;
        announce(closed);
        Peer browser;
        QVERIFY(browser.connectTo(here.link.port));
        QVERIFY(browser.send(post.left(20)));
        QVERIFY(eventually([&] { return loggedCount(closed) == 1; }));
        Peer server;
        QVERIFY(here.link.join(&server));
        QVERIFY(server.send("HMDINFOBACK\tdeviceId:D3A~D3A;10.0.0.7;true;x\nRESTARTSTEAMVR\n"));
        QVERIFY(eventually([&] { return here.restarts == 1; }));
        QCOMPARE(here.link.manager->deviceId(), QString("D3A"));
        QVERIFY(server.greet());
    }

    // Everything that it says, cut at every place.
    void aServerIsNeverTakenForOne()
    {
        const QByteArray talk = "Hello\nDeviceConnectBack\ttrue\nDeviceConnectBack\tfalse\n"
                                "HMDINFOBACK\tdeviceId:~GET;Host: 1;false;x HTTP/1.1\n"
                                "HMDINFOBACK\nRESTARTSTEAMVR\nsomething: else\nUnknown\r\n";
        Obeying here;
        Peer server;
        QVERIFY(here.link.join(&server));
        for (int size = 0; size < talk.size(); ++size) {
            QVERIFY(server.send(talk.left(size)));
            QVERIFY(server.send(talk.mid(size)));
            QCOMPARE(server.receiveText(), QByteArray("HHHH, You can see me!\n"));
        }
        QVERIFY(server.greet());
        QCOMPARE(here.restarts, talk.size());
    }
};

KOLM_TEST_MAIN(BrowsersTest)
#include "tst_browsers.moc"
