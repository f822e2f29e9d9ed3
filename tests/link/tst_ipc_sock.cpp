#include "tests/link/passing_server.h"
#include "tests/support/test_case.h"

using namespace std::chrono_literals;

using Lines = PassingServer::Lines;

class IPCSockTest : public TestCase
{
    Q_OBJECT

private slots:
    void saysThatItListens()
    {
        const PassingServer server;
        QVERIFY(server.started);
        // Not the port in use: the line is always the same.
        QCOMPARE(server.streams.info(), server.bound);
        QCOMPARE(server.streams.error(), QString());
    }

    void saysWhyItCannotListen_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("no address at all") << QByteArray("localhost");
        QTest::newRow("an address of somebody else") << QByteArray("203.0.113.1");
    }

    void saysWhyItCannotListen()
    {
        QFETCH(QByteArray, address);
        const CapturedStreams streams;
        IPCSock socket(std::make_shared<Poller>());
        socket.setPort(freePort());
        socket.setAddress(address.constData());
        QVERIFY(!socket.startup());

        const socket_api::Socket same = socket_api::openTcp();
        QVERIFY(!socket_api::bindTo(same.get(), address.constData(), 1));
        const int error = socket_api::lastError();
        QCOMPARE(streams.error(),
                 QStringLiteral("ControlSocket::Startup bind error : %1\n").arg(error));
        QCOMPARE(streams.info(), QString());
        QVERIFY(!socket.acceptClient());
        QVERIFY(!socket.hasClient());
    }

    void listensAfterAFailure()
    {
        PassingServer server;
        server.socket.setAddress("203.0.113.1");
        QVERIFY(!server.socket.startup());
        server.socket.setAddress("127.0.0.1");
        QVERIFY(server.socket.startup());
        Peer peer;
        QVERIFY(peer.connectTo(server.port));
        QVERIFY(server.accept());
    }

    void doesNothingBeforeItListens()
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

    void acceptsAClient()
    {
        PassingServer server;
        Peer peer;
        QVERIFY(peer.connectTo(server.port));
        QVERIFY(!server.socket.hasClient());
        QVERIFY(!server.pass());
        QVERIFY(server.accepted);
        QVERIFY(server.socket.hasClient());
        QCOMPARE(server.streams.info(), server.bound);
    }

    void acceptsNobodyWhenNobodyIsThere()
    {
        PassingServer server;
        QCOMPARE(server.poller->wait(Poller::Readable, 0ms), 0);
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

    void dropsAPeerFromAnotherAddressSilently()
    {
        PassingServer server;
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
        QCOMPARE(server.streams.info(), server.bound);
        QCOMPARE(server.streams.error(), QString());
    }

    void replacesTheClientByANewerOne()
    {
        PassingServer server;
        Peer first;
        Peer second;
        QVERIFY(first.connectTo(server.port));
        QVERIFY(server.accept());
        const quint64 number = server.socket.clientNumber();
        QVERIFY(second.connectTo(server.port));
        QVERIFY(server.accept());
        QVERIFY(server.socket.clientNumber() != number);
        QCOMPARE(server.streams.info(), server.bound + "Closing old control client\n");
        QVERIFY(first.waitForEnd());

        QVERIFY(second.send("here\n"));
        QVERIFY(server.pass());
        QVERIFY(server.lines == Lines{"here"});
        server.socket.send("X");
        QCOMPARE(second.receive(2), QByteArray("X\0", 2));
    }

    void closesTheClientAlone()
    {
        PassingServer server;
        Peer peer;
        QVERIFY(peer.connectTo(server.port));
        QVERIFY(server.accept());
        server.socket.closeClient();
        QVERIFY(!server.socket.hasClient());
        QVERIFY(peer.waitForEnd());
        QCOMPARE(server.streams.info(), server.bound);
        Peer next;
        QVERIFY(next.connectTo(server.port));
        QVERIFY(server.accept());
    }

    void closesEverything()
    {
        PassingServer server;
        Peer peer;
        QVERIFY(peer.connectTo(server.port));
        QVERIFY(server.accept());
        server.socket.close();
        QVERIFY(!server.socket.hasClient());
        QVERIFY(peer.waitForEnd());
        Peer late;
        QVERIFY(!late.connectTo(server.port));
        QCOMPARE(server.streams.info(), server.bound);

        // The port is free at once, although the connection lingers.
        QVERIFY(server.socket.startup());
        QVERIFY(late.connectTo(server.port));
        QVERIFY(server.accept());
    }
};

KOLM_TEST_MAIN(IPCSockTest)
#include "tst_ipc_sock.moc"
