#include "tests/link/passing_server.h"
#include "tests/support/test_case.h"

using namespace std::chrono_literals;

using Lines = PassingServer::Lines;

class IPCSockDataTest : public TestCase
{
    Q_OBJECT

private slots:
    void forgetsTheHalfLineOfAReplacedClient()
    {
        PassingServer server;
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

    void forgetsTheHalfLineOfAClosedClient()
    {
        PassingServer server;
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

    void receivesLines()
    {
        PassingServer server;
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

    void readsAtMost999BytesAtOnce()
    {
        PassingServer server;
        Peer peer;
        QVERIFY(peer.connectTo(server.port));
        QVERIFY(server.accept());
        QVERIFY(peer.send(QByteArray(998, 'a') + "\nb\n" + QByteArray(996, 'c') + "\n"));
        QVERIFY(server.pass());
        QVERIFY(server.lines == Lines{std::string(998, 'a')});
        QVERIFY(server.pass());
        QVERIFY(server.lines == (Lines{"b", std::string(996, 'c')}));
    }

    void dropsTheRestOfAChunkBehindANul()
    {
        PassingServer server;
        Peer peer;
        QVERIFY(peer.connectTo(server.port));
        QVERIFY(server.accept());
        QVERIFY(peer.send(QByteArray(990, 'a') + '\0' + "12345678" + "b\n"));
        QVERIFY(!server.pass());
        QVERIFY(server.pass());
        QVERIFY(server.lines == Lines{std::string(990, 'a') + "b"});
    }

    void keepsAClientThatHasNothingToSay()
    {
        PassingServer server;
        Peer peer;
        QVERIFY(peer.connectTo(server.port));
        QVERIFY(server.accept());
        QVERIFY(peer.send("x\n"));
        QVERIFY(server.pass());
        // The wait said readable, but all was read.
        server.lines.clear();
        QVERIFY(!server.socket.receiveLines(&server.lines));
        QVERIFY(server.socket.hasClient());
        QCOMPARE(server.streams.info(), server.bound);
    }

    void noticesAClosedClient()
    {
        PassingServer server;
        Peer peer;
        QVERIFY(peer.connectTo(server.port));
        QVERIFY(server.accept());
        peer.close();
        QVERIFY(!server.pass());
        QVERIFY(!server.socket.hasClient());
        QCOMPARE(server.streams.info(), server.bound + "Control connection has closed\n");
        QCOMPARE(server.poller->wait(Poller::Readable, 0ms), 0);
    }

    void dropsAClientWhoseLineNeverEnds()
    {
        PassingServer server;
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
                 server.bound + QStringLiteral("Error on recv. close control client: %1\n")
                                    .arg(socket_api::messageTooLongError()));

        Peer next;
        QVERIFY(next.connectTo(server.port));
        QVERIFY(server.accept());
        QVERIFY(next.send("x\n"));
        QVERIFY(server.pass());
        QVERIFY(server.lines == Lines{"x"});
    }

    void takesALineOfOneMebibyte()
    {
        PassingServer server;
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

    void sendsTextsWithTheirNul_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("one letter") << QByteArray("X");
        QTest::newRow("nothing") << QByteArray("");
        QTest::newRow("with a line feed") << QByteArray("HHHH, You can see me!\n");
        QTest::newRow("high bytes") << QByteArray("\xE5\xA4\xB4\xFF");
        QTest::newRow("long") << QByteArray(20000, 'l');
    }

    void sendsTextsWithTheirNul()
    {
        QFETCH(QByteArray, text);
        PassingServer server;
        Peer peer;
        QVERIFY(peer.connectTo(server.port));
        QVERIFY(server.accept());
        server.socket.send(text.constData());
        server.socket.send("end");
        QCOMPARE(peer.receive(text.size() + 5), text + '\0' + QByteArray("end\0", 4));
        QCOMPARE(server.streams.echo(), QByteArray());
    }

    void sendsNothingWithoutAClient()
    {
        PassingServer server;
        server.socket.send("lost");
        Peer peer;
        QVERIFY(peer.connectTo(server.port));
        server.socket.send("lost");
        QVERIFY(server.accept());
        server.socket.send("X");
        QCOMPARE(peer.receive(2), QByteArray("X\0", 2));
    }
};

KOLM_TEST_MAIN(IPCSockDataTest)
#include "tst_ipc_sock_data.moc"
