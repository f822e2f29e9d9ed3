#include "pc/socket_api.h"
#include "tests/link/running_link.h"
#include "tests/support/test_case.h"

#include <QRandomGenerator>

#include <vector>

// Peers that are broken, mad or mean. Whatever they do, the next one is served.
class BadPeersTest : public TestCase
{
    Q_OBJECT

private slots:
    void mayTalkNonsense_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("NUL bytes") << QByteArray(5000, '\0');
        QTest::newRow("line feeds") << QByteArray(100000, '\n');
        QTest::newRow("half a line") << QByteArray("HMDINFOBA");
        QTest::newRow("a command in the wrong case") << QByteArray("hello\n");
        QTest::newRow("broken UTF-8")
            << QByteArray("HMDINFOBACK\t\xFF;\xC0;\x80;\xF8~deviceId:\xE5\n");
        QTest::newRow("separators") << "HMDINFOBACK\t" + QByteArray("~;").repeated(50000) + '\n';
        QTest::newRow("tabs") << QByteArray(50000, '\t') + '\n';
    }

    void mayTalkNonsense()
    {
        QFETCH(QByteArray, bytes);
        const RunningLink link;
        Peer bad;
        QVERIFY(bad.connectTo(link.port));
        QVERIFY(bad.send(bytes));
        Peer good;
        QVERIFY(link.join(&good));
        QVERIFY(bad.waitForEnd());
        QCOMPARE(link.echoed().removeAll("HHHH, You can see me!"), 1);
    }

    void maySendRandomBytes()
    {
        const RunningLink link;
        QRandomGenerator random(20240517);
        for (int round = 0; round < 50; ++round) {
            QByteArray bytes(3000, '\0');
            for (char &byte : bytes)
                byte = static_cast<char>(random.bounded(256));
            Peer bad;
            QVERIFY(bad.connectTo(link.port));
            QVERIFY(bad.send(bytes));
            bad.close();
        }
        Peer good;
        QVERIFY(link.join(&good));
    }

    void mayCloseInTheMiddleOfALine()
    {
        const RunningLink link;
        Peer bad;
        QVERIFY(link.join(&bad));
        QVERIFY(bad.send("HMDINFOBACK\tS;N;true;x"));
        bad.close();
        QVERIFY(eventually([&] { return !link.manager->hasClient(); }));
        QVERIFY(link.streams.info().endsWith("\nControl connection has closed\n"));
        Peer good;
        QVERIFY(good.connectTo(link.port));
        QVERIFY(good.send("\n"));
        QVERIFY(good.greet());
        QCOMPARE(link.manager->hmdInfoList(), HeadsetList());
        QCOMPARE(loggedCount("\"\" \"\" 1"), 1);
    }

    void mayResetTheConnection()
    {
        const RunningLink link;
        Peer bad;
        QVERIFY(link.join(&bad));
        const int before = link.echoed().size();
        QVERIFY(bad.send("Hello\nHMDINFOBACK\tS;N;true;x"));
        QVERIFY(eventually([&] { return link.echoed().size() > before; }));
        // Closing with the answer unread resets the connection on most systems.
        bad.close();
        QVERIFY(eventually([&] { return !link.manager->hasClient(); }));
        // Sending after that goes nowhere.
        link.manager->requestHmdInfo();
        Peer good;
        QVERIFY(link.join(&good));
        QCOMPARE(link.manager->hmdInfoList(), HeadsetList());
    }

    void mayConnectAThousandTimes()
    {
        const RunningLink link;
        for (int i = 0; i < 1000; ++i) {
            Peer peer;
            QVERIFY2(peer.connectTo(link.port), qPrintable(QString::number(i)));
            if (i % 3 == 0)
                QVERIFY(peer.send("Hel"));
            else if (i % 5 == 0)
                QVERIFY(peer.greet());
            peer.close();
        }
        Peer good;
        QVERIFY(link.join(&good));
    }

    void mayComeInCrowds()
    {
        const RunningLink link;
        std::vector<std::unique_ptr<Peer>> peers;
        for (int i = 0; i < 300; ++i) {
            peers.push_back(std::make_unique<Peer>());
            QVERIFY2(peers.back()->connectTo(link.port), qPrintable(QString::number(i)));
        }
        QVERIFY(peers.back()->greet());
        for (std::size_t i = 0; i + 1 < peers.size(); ++i)
            QVERIFY(peers[i]->waitForEnd());
        QCOMPARE(link.streams.info().count("Closing old control client\n"), 299);
    }

    void mayReplaceEachOther()
    {
        const RunningLink link;
        Peer first;
        Peer second;
        QVERIFY(link.join(&first));
        QVERIFY(first.send("HMDINFOBACK\tfirst;N;true;x"));
        QVERIFY(link.join(&second));
        QVERIFY(first.waitForEnd());
        QVERIFY(second.send("\nHello\n"));
        QCOMPARE(second.receiveText(), QByteArray("HHHH, You can see me!\n"));
        QVERIFY(link.streams.info().endsWith("\nClosing old control client\n"));
        QCOMPARE(link.manager->hmdInfoList(), HeadsetList());
    }

    void mayNeverEndALine()
    {
        const RunningLink link;
        Peer bad;
        QVERIFY(link.join(&bad));
        QVERIFY(bad.send("HMDINFOBACK\t"));
        const QByteArray part(64 * 1024, 'x');
        // The link is allowed to end the connection under our hands.
        for (int sent = 0; sent < 2 * 1024 * 1024 && bad.send(part); sent += part.size()) {
        }
        QVERIFY(eventually([&] { return !link.manager->hasClient(); }));
        QVERIFY(link.streams.info().endsWith(
            QStringLiteral("\nError on recv. close control client: %1\n")
                .arg(socket_api::messageTooLongError())));
        Peer good;
        QVERIFY(link.join(&good));
    }

    void mayNeverRead()
    {
        constexpr int texts = 100000;
        RunningLink link;
        Peer deaf;
        QVERIFY(link.join(&deaf));
        const QString text(200, 'x');
        for (int i = 0; i < texts; ++i)
            link.manager->sendRaw(text);
        QCOMPARE(link.echoed().count(text), texts);
        // The worker is not stuck, and it does not try over and over.
        Peer good;
        QVERIFY(link.join(&good));
        const quint64 before = link.manager->wakeUps();
        QVERIFY(good.isSilentFor(200));
        QCOMPARE(link.manager->wakeUps(), before);
        link.manager.reset();
        QVERIFY(good.waitForEnd());
    }

    // What did not fit is lost; what arrives is whole and in order.
    void mayReadLate()
    {
        constexpr int texts = 100000;
        const RunningLink link;
        Peer late;
        QVERIFY(link.join(&late));
        late.socket().setReadBufferSize(1);
        const QString rest = ' ' + QString(500, 'x');
        for (int i = 1; i <= texts; ++i)
            link.manager->sendRaw(QString::number(i) + rest);
        // Nothing is on its way to the worker any more, and it sleeps.
        QVERIFY(late.socket().bytesAvailable() <= 1);
        QVERIFY(late.send("DeviceConnectBack\ttrue\n"));
        QVERIFY(eventually([&] { return link.manager->isDeviceConnected(); }));

        late.socket().setReadBufferSize(0);
        int previous = 0;
        int received = 0;
        for (;;) {
            link.manager->sendRaw("end");
            QByteArray text = late.receiveText();
            if (text == "end")
                break;
            QVERIFY(text.endsWith(rest.toUtf8()));
            const int number = text.left(text.size() - rest.size()).toInt();
            QVERIFY2(number > previous && number <= texts, text.constData());
            previous = number;
            ++received;
        }
        QVERIFY(received > 0);
        QVERIFY2(received < texts, "the texts were meant to be too many");
    }

    void mayReadAHugeTextLate()
    {
        const RunningLink link;
        Peer late;
        QVERIFY(link.join(&late));
        // More than the system's buffers hold.
        QByteArray huge(48 * 1024 * 1024, '\0');
        for (int i = 0; i < huge.size(); ++i)
            huge[i] = static_cast<char>('a' + i % 26);
        link.manager->sendRaw(QString::fromLatin1(huge));
        link.manager->sendRaw("next");
        QVERIFY(late.receive(huge.size() + 1) == huge + '\0');
        // The next one is lost if there was no room at that moment; it never got
        // into the middle of the huge one.
        QVERIFY(late.send("Hello\n"));
        QByteArray text = late.receiveText();
        if (text == "next")
            text = late.receiveText();
        QCOMPARE(text, QByteArray("HHHH, You can see me!\n"));
        const quint64 before = link.manager->wakeUps();
        QVERIFY(late.isSilentFor(100));
        QCOMPARE(link.manager->wakeUps(), before);
    }
};

KOLM_TEST_MAIN(BadPeersTest)
#include "tst_bad_peers.moc"
