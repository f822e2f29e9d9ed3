#include "link/ipc_sock.h"
#include "tests/link/captured_streams.h"
#include "tests/link/peer.h"
#include "tests/support/test_case.h"

namespace {

constexpr int limit = 10000;
const QString bound =
    QStringLiteral("ControlSocket::Startup Successfully bound to 127.0.0.1 9932\n");

// A listening socket on a port of its own, driven by the test's thread.
struct Server
{
    Server()
    {
        for (int attempt = 0; attempt < 10 && !started; ++attempt) {
            port = freePort();
            socket.setPort(port);
            started = socket.startup();
        }
    }

    // One pass as the worker makes it; what was received is in `lines`.
    bool pass()
    {
        lines.clear();
        poller->wait(Poller::Readable, limit);
        accepted = socket.acceptClient();
        return socket.receiveLines(&lines);
    }

    // Passes until there is a new client.
    bool accept()
    {
        accepted = false;
        for (int attempt = 0; attempt < 10 && !accepted; ++attempt)
            pass();
        return accepted;
    }

    CapturedStreams streams;
    int port = 0;
    bool started = false;
    bool accepted = false;
    std::vector<std::string> lines;
    std::shared_ptr<Poller> poller = std::make_shared<Poller>();
    IPCSock socket{poller};
};

using Lines = std::vector<std::string>;

} // namespace

class IPCSockTest : public TestCase
{
    Q_OBJECT

private slots:
    void saysThatItListens();
    void saysWhyItCannotListen_data();
    void saysWhyItCannotListen();
    void listensAfterAFailure();
    void doesNothingBeforeItListens();
    void acceptsAClient();
    void acceptsNobodyWhenNobodyIsThere();
    void dropsAPeerFromAnotherAddressSilently();
    void replacesTheClientByANewerOne();
    void forgetsTheHalfLineOfAReplacedClient();
    void forgetsTheHalfLineOfAClosedClient();
    void receivesLines();
    void readsAtMost999BytesAtOnce();
    void dropsTheRestOfAChunkBehindANul();
    void keepsAClientThatHasNothingToSay();
    void noticesAClosedClient();
    void dropsAClientWhoseLineNeverEnds();
    void takesALineOfOneMebibyte();
    void sendsTextsWithTheirNul_data();
    void sendsTextsWithTheirNul();
    void sendsNothingWithoutAClient();
    void closesTheClientAlone();
    void closesEverything();
};

void IPCSockTest::saysThatItListens()
{
    const Server server;
    QVERIFY(server.started);
    // Not the port in use: the line is always the same.
    QCOMPARE(server.streams.info(), bound);
    QCOMPARE(server.streams.error(), QString());
}

void IPCSockTest::saysWhyItCannotListen_data()
{
    QTest::addColumn<QByteArray>("address");
    QTest::newRow("no address at all") << QByteArray("localhost");
    QTest::newRow("an address of somebody else") << QByteArray("203.0.113.1");
}

void IPCSockTest::saysWhyItCannotListen()
{
    QFETCH(QByteArray, address);
    const CapturedStreams streams;
    IPCSock socket(std::make_shared<Poller>());
    socket.setPort(freePort());
    socket.setAddress(address.constData());
    QVERIFY(!socket.startup());

    const socket_api::Handle same = socket_api::openTcp();
    QVERIFY(!socket_api::bindTo(same, address.constData(), 1));
    const int error = socket_api::lastError();
    socket_api::close(same);
    QCOMPARE(streams.error(),
             QStringLiteral("ControlSocket::Startup bind error : %1\n").arg(error));
    QCOMPARE(streams.info(), QString());
    QVERIFY(!socket.acceptClient());
    QVERIFY(!socket.hasClient());
}

void IPCSockTest::listensAfterAFailure()
{
    Server server;
    server.socket.setAddress("203.0.113.1");
    QVERIFY(!server.socket.startup());
    server.socket.setAddress("127.0.0.1");
    QVERIFY(server.socket.startup());
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
}

void IPCSockTest::doesNothingBeforeItListens()
{
    const CapturedStreams streams;
    IPCSock socket(std::make_shared<Poller>());
    Lines lines;
    QVERIFY(!socket.hasClient());
    QCOMPARE(socket.clientNumber(), quint64(0));
    QVERIFY(!socket.acceptClient());
    QVERIFY(!socket.receiveLines(&lines));
    socket.send("X");
    socket.continueSending();
    socket.closeClient();
    socket.close();
    QCOMPARE(streams.info() + streams.error() + streams.echo(), QString());
}

void IPCSockTest::acceptsAClient()
{
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(!server.socket.hasClient());
    QVERIFY(!server.pass());
    QVERIFY(server.accepted);
    QVERIFY(server.socket.hasClient());
    QCOMPARE(server.streams.info(), bound);
}

void IPCSockTest::acceptsNobodyWhenNobodyIsThere()
{
    Server server;
    QCOMPARE(server.poller->wait(Poller::Readable, 0), 0);
    QVERIFY(!server.socket.acceptClient());
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    // The last wait did not see it.
    QVERIFY(!server.socket.acceptClient());
    QVERIFY(server.accept());
    // The last wait saw somebody who is not waiting any more.
    QVERIFY(!server.socket.acceptClient());
    QVERIFY(!server.socket.isAcceptingPaused());
    QVERIFY(server.socket.hasClient());
}

void IPCSockTest::dropsAPeerFromAnotherAddressSilently()
{
    Server server;
    Peer client;
    QVERIFY(client.connectTo(server.port));
    QVERIFY(server.accept());
    const quint64 number = server.socket.clientNumber();

    Peer stranger;
    QVERIFY(stranger.connectTo(server.port, "127.0.0.2"));
    server.pass();
    QVERIFY(!server.accepted);
    QVERIFY(stranger.waitForEnd());
    QCOMPARE(server.socket.clientNumber(), number);
    QCOMPARE(server.streams.info(), bound);
    QCOMPARE(server.streams.error(), QString());
}

void IPCSockTest::replacesTheClientByANewerOne()
{
    Server server;
    Peer first;
    Peer second;
    QVERIFY(first.connectTo(server.port));
    QVERIFY(server.accept());
    const quint64 number = server.socket.clientNumber();
    QVERIFY(second.connectTo(server.port));
    QVERIFY(server.accept());
    QVERIFY(server.socket.clientNumber() != number);
    QCOMPARE(server.streams.info(), bound + "Closing old control client\n");
    QVERIFY(first.waitForEnd());

    QVERIFY(second.send("here\n"));
    QVERIFY(server.pass());
    QVERIFY(server.lines == Lines{"here"});
    server.socket.send("X");
    QCOMPARE(second.receive(2), QByteArray("X\0", 2));
}

void IPCSockTest::forgetsTheHalfLineOfAReplacedClient()
{
    Server server;
    Peer first;
    Peer second;
    QVERIFY(first.connectTo(server.port));
    QVERIFY(server.accept());
    QVERIFY(first.send("half"));
    QVERIFY(!server.pass());
    QVERIFY(second.connectTo(server.port));
    QVERIFY(server.accept());
    QVERIFY(second.send("whole\n"));
    QVERIFY(server.pass());
    QVERIFY(server.lines == Lines{"whole"});
}

void IPCSockTest::forgetsTheHalfLineOfAClosedClient()
{
    Server server;
    Peer first;
    Peer second;
    QVERIFY(first.connectTo(server.port));
    QVERIFY(server.accept());
    QVERIFY(first.send("half"));
    QVERIFY(!server.pass());
    first.close();
    QVERIFY(!server.pass());
    QVERIFY(second.connectTo(server.port));
    QVERIFY(server.accept());
    QVERIFY(second.send("whole\n"));
    QVERIFY(server.pass());
    QVERIFY(server.lines == Lines{"whole"});
}

void IPCSockTest::receivesLines()
{
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
    QVERIFY(peer.send("Hello\nHel"));
    QVERIFY(server.pass());
    QVERIFY(server.lines == Lines{"Hello"});
    QVERIFY(peer.send("lo"));
    QVERIFY(!server.pass());
    QVERIFY(server.lines.empty());
    QVERIFY(peer.send("\nA\r\n\n"));
    QVERIFY(server.pass());
    QVERIFY(server.lines == (Lines{"Hello", "A\r", ""}));
}

void IPCSockTest::readsAtMost999BytesAtOnce()
{
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
    QVERIFY(peer.send(QByteArray(998, 'a') + "\nb\n" + QByteArray(996, 'c') + "\n"));
    QVERIFY(server.pass());
    QVERIFY(server.lines == Lines{std::string(998, 'a')});
    QVERIFY(server.pass());
    QVERIFY(server.lines == (Lines{"b", std::string(996, 'c')}));
}

void IPCSockTest::dropsTheRestOfAChunkBehindANul()
{
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
    QVERIFY(peer.send(QByteArray(990, 'a') + '\0' + "12345678" + "b\n"));
    QVERIFY(!server.pass());
    QVERIFY(server.pass());
    QVERIFY(server.lines == Lines{std::string(990, 'a') + "b"});
}

void IPCSockTest::keepsAClientThatHasNothingToSay()
{
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
    QVERIFY(peer.send("x\n"));
    QVERIFY(server.pass());
    // The wait said readable, but all was read.
    server.lines.clear();
    QVERIFY(!server.socket.receiveLines(&server.lines));
    QVERIFY(server.socket.hasClient());
    QCOMPARE(server.streams.info(), bound);
}

void IPCSockTest::noticesAClosedClient()
{
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
    peer.close();
    QVERIFY(!server.pass());
    QVERIFY(!server.socket.hasClient());
    QCOMPARE(server.streams.info(), bound + "Control connection has closed\n");
    QCOMPARE(server.poller->wait(Poller::Readable, 0), 0);
}

void IPCSockTest::dropsAClientWhoseLineNeverEnds()
{
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
    const QByteArray part(512, 'x');
    for (int sent = 0; sent < 1024 * 1024; sent += part.size()) {
        QVERIFY(peer.send(part));
        QVERIFY(!server.pass());
        QVERIFY(server.socket.hasClient());
    }
    QVERIFY(peer.send("x"));
    QVERIFY(!server.pass());
    QVERIFY(!server.socket.hasClient());
    QVERIFY(peer.waitForEnd());
    QCOMPARE(server.streams.info(),
             bound + QStringLiteral("Error on recv. close control client: %1\n")
                         .arg(socket_api::messageTooLongError()));

    Peer next;
    QVERIFY(next.connectTo(server.port));
    QVERIFY(server.accept());
    QVERIFY(next.send("x\n"));
    QVERIFY(server.pass());
    QVERIFY(server.lines == Lines{"x"});
}

void IPCSockTest::takesALineOfOneMebibyte()
{
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
    const QByteArray part(512, 'x');
    for (int sent = 0; sent < 1024 * 1024; sent += part.size()) {
        QVERIFY(peer.send(part));
        QVERIFY(!server.pass());
    }
    QVERIFY(peer.send("\n"));
    QVERIFY(server.pass());
    QCOMPARE(server.lines.size(), std::size_t(1));
    QCOMPARE(server.lines[0].size(), std::size_t(1024 * 1024));
}

void IPCSockTest::sendsTextsWithTheirNul_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("one letter") << QByteArray("X");
    QTest::newRow("nothing") << QByteArray("");
    QTest::newRow("with a line feed") << QByteArray("HHHH, You can see me!\n");
    QTest::newRow("high bytes") << QByteArray("\xE5\xA4\xB4\xFF");
    QTest::newRow("long") << QByteArray(20000, 'l');
}

void IPCSockTest::sendsTextsWithTheirNul()
{
    QFETCH(QByteArray, text);
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
    server.socket.send(text.constData());
    server.socket.send("end");
    QCOMPARE(peer.receive(text.size() + 5), text + '\0' + QByteArray("end\0", 4));
    QCOMPARE(server.streams.echo(), QByteArray());
}

void IPCSockTest::sendsNothingWithoutAClient()
{
    Server server;
    server.socket.send("lost");
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    server.socket.send("lost");
    QVERIFY(server.accept());
    server.socket.send("X");
    QCOMPARE(peer.receive(2), QByteArray("X\0", 2));
}

void IPCSockTest::closesTheClientAlone()
{
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
    server.socket.closeClient();
    QVERIFY(!server.socket.hasClient());
    QVERIFY(peer.waitForEnd());
    QCOMPARE(server.streams.info(), bound);
    Peer next;
    QVERIFY(next.connectTo(server.port));
    QVERIFY(server.accept());
}

void IPCSockTest::closesEverything()
{
    Server server;
    Peer peer;
    QVERIFY(peer.connectTo(server.port));
    QVERIFY(server.accept());
    server.socket.close();
    QVERIFY(!server.socket.hasClient());
    QVERIFY(peer.waitForEnd());
    Peer late;
    QVERIFY(!late.connectTo(server.port));
    QCOMPARE(server.streams.info(), bound);

    // The port is free at once, although the connection lingers.
    QVERIFY(server.socket.startup());
    QVERIFY(late.connectTo(server.port));
    QVERIFY(server.accept());
}

KOLM_TEST_MAIN(IPCSockTest)
#include "tst_ipc_sock.moc"
