#include "tests/link/running_link.h"
#include "tests/link/semaphore.h"
#include "tests/support/test_case.h"

#include <atomic>
#include <thread>

namespace {

const QByteArray echoPrefix = "Send data exchange command response: ";

} // namespace

using Request = std::function<void(SysManager &)>;
Q_DECLARE_METATYPE(Request)

// A restart that blocks until the test has looked around.
struct BlockingRestart
{
    std::function<void()> handler()
    {
        return [this] {
            thread = std::this_thread::get_id();
            begun.release();
            end.acquire();
        };
    }

    std::thread::id thread;
    Semaphore begun;
    Semaphore end;
};

class SysManagerTest : public TestCase
{
    Q_OBJECT

private slots:
    void answersHello()
    {
        const RunningLink link;
        QVERIFY(link.started);
        Peer peer;
        QVERIFY(peer.connectTo(link.port));
        QVERIFY(peer.send("Hello\n"));
        QCOMPARE(peer.receive(23), QByteArray("HHHH, You can see me!\n\0", 23));
        QVERIFY(link.manager->hasClient());
        QCOMPARE(link.streams.echo(), echoPrefix + "HHHH, You can see me!\n\n");
        QCOMPARE(link.streams.info(),
                 QString("ControlSocket::Startup Successfully bound to 127.0.0.1 9932\n"));
        QCOMPARE(link.streams.error(), QString());
    }

    void listensOnce()
    {
        const RunningLink link;
        QVERIFY(link.manager->start());
        QVERIFY(link.manager->start());
        QCOMPARE(link.streams.info().count("Successfully"), 1);
        Peer peer;
        QVERIFY(link.join(&peer));
    }

    void sendsWhatTheProgramAsksFor_data()
    {
        QTest::addColumn<Request>("request");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QStringList>("log");
        QTest::newRow("linkTo") << Request([](SysManager &m) { m.linkTo("D3X", "10.0.0.7"); })
                                << QByteArray("LinkTo D3X 10.0.0.7 ")
                                << QStringList{"The command is LinkTo 10.0.0.7 D3X"};
        QTest::newRow("disconnect")
            << Request([](SysManager &m) { m.disconnect("D3X", "10.0.0.7"); })
            << QByteArray("Disconnect D3X 10.0.0.7 ")
            << QStringList{"The command is Disconnect 10.0.0.7 D3X"};
        QTest::newRow("Chinese") << Request([](SysManager &m) {
            m.linkTo(QStringLiteral("头显"), QStringLiteral("地"));
        }) << QByteArray("LinkTo 头显 地 ")
                                 << QStringList{QStringLiteral("The command is LinkTo 地 头显")};
        QTest::newRow("requestHmdInfo") << Request([](SysManager &m) { m.requestHmdInfo(); })
                                        << QByteArray("HMDInfoRequest") << QStringList{};
        QTest::newRow("wired") << Request([](SysManager &m) { m.sendWiredConnect(true); })
                               << QByteArray("WiredConnect")
                               << QStringList{"sendWiredConnnect:true"};
        QTest::newRow("wireless") << Request([](SysManager &m) { m.sendWiredConnect(false); })
                                  << QByteArray("WirelessConnect")
                                  << QStringList{"sendWiredConnnect:false"};
        QTest::newRow("sendRaw") << Request([](SysManager &m) { m.sendRaw("any text"); })
                                 << QByteArray("any text") << QStringList{};
        QTest::newRow("empty text")
            << Request([](SysManager &m) { m.sendRaw(""); }) << QByteArray("") << QStringList{};
    }

    void sendsWhatTheProgramAsksFor()
    {
        QFETCH(Request, request);
        QFETCH(QByteArray, text);
        const RunningLink link;
        Peer peer;
        QVERIFY(link.join(&peer));
        const QByteArray before = link.streams.echo();
        // The line is logged after it was answered.
        QVERIFY(eventually([this] { return loggedCount("\"Hello\" \"\" 0") == 1; }));
        clearLog();

        request(*link.manager);
        // The echo and the log are there when the call returns.
        QCOMPARE(link.streams.echo(), before + echoPrefix + text + '\n');
        QTEST(logged(), "log");
        QCOMPARE(peer.receive(text.size() + 1), text + '\0');
    }

    void staysSilentAboutHeadsetsWithoutAServer()
    {
        const RunningLink link;
        link.manager->linkTo("S", "A");
        link.manager->disconnect("S", "A");
        QCOMPARE(link.streams.echo(), QByteArray());
        QCOMPARE(logged(), QStringList());
    }

    void echoesOtherRequestsWithoutAServer()
    {
        const RunningLink link;
        link.manager->requestHmdInfo();
        link.manager->sendWiredConnect(true);
        link.manager->sendRaw("x");
        QCOMPARE(link.echoed(), (QStringList{"HMDInfoRequest", "WiredConnect", "x"}));
        QCOMPARE(logged(), QStringList{"sendWiredConnnect:true"});
    }

    void sendsATextOnlyUpToItsNul()
    {
        const RunningLink link;
        Peer peer;
        QVERIFY(link.join(&peer));
        const QByteArray before = link.streams.echo();
        link.manager->sendRaw(QString("ab") + QChar(0) + "cd");
        link.manager->sendRaw("e");
        QCOMPARE(peer.receive(5), QByteArray("ab\0e\0", 5));
        QCOMPARE(link.streams.echo(),
                 before + echoPrefix + QByteArray("ab\0cd\n", 6) + echoPrefix + "e\n");
    }

    void sendsNothingAskedForBeforeTheServerCame()
    {
        const RunningLink link;
        link.manager->requestHmdInfo();
        link.manager->sendWiredConnect(true);
        Peer peer;
        // The first text that arrives is the answer.
        QVERIFY(link.join(&peer));
    }

    void reportsWhatTheServerSaid()
    {
        const RunningLink link;
        QVERIFY(!link.manager->hasClient());
        QVERIFY(!link.manager->isDeviceConnected());
        QCOMPARE(link.manager->deviceId(), QString());
        Peer peer;
        QVERIFY(peer.connectTo(link.port));
        QVERIFY(peer.send("DeviceConnectBack\ttrue\n"
                          "HMDINFOBACK\tdeviceId:ABC~S1;Name1;true;x~S2;Name2;false;y\n"));
        QVERIFY(peer.greet());
        QVERIFY(link.manager->isDeviceConnected());
        QCOMPARE(link.manager->deviceId(), QString("ABC"));
        QCOMPARE(link.manager->hmdInfoList(),
                 (HeadsetList{{"S1", "Name1", true}, {"S2", "Name2", false}}));
        QVERIFY(peer.send("DeviceConnectBack\tTRUE\nHMDINFOBACK\n"));
        QVERIFY(peer.greet());
        QVERIFY(!link.manager->isDeviceConnected());
        QCOMPARE(link.manager->deviceId(), QString("ABC"));
        QCOMPARE(link.manager->hmdInfoList(), HeadsetList());
    }

    void reportsOneEmptyHeadsetWithoutAServer()
    {
        const RunningLink link;
        QCOMPARE(link.manager->hmdInfoList(), HeadsetList{HeadsetRecord()});
        QVERIFY(!link.manager->hmdInfoList()[0].connected);
    }

    void keepsItsKnowledgeWhenTheServerGoes()
    {
        const RunningLink link;
        {
            Peer peer;
            QVERIFY(peer.connectTo(link.port));
            QVERIFY(peer.send("DeviceConnectBack\ttrue\nHMDINFOBACK\tdeviceId:ABC~S;N;true;x\n"));
            QVERIFY(peer.greet());
            peer.close();
        }
        QVERIFY(eventually([&] { return !link.manager->hasClient(); }));
        QCOMPARE(link.manager->hmdInfoList(), HeadsetList{HeadsetRecord()});
        QCOMPARE(link.manager->deviceId(), QString("ABC"));
        QVERIFY(link.manager->isDeviceConnected());
        QVERIFY(link.streams.info().endsWith("\nControl connection has closed\n"));

        Peer next;
        QVERIFY(link.join(&next));
        QCOMPARE(link.manager->hmdInfoList(), (HeadsetList{{"S", "N", true}}));
    }

    void forgetsTheHeadsetsAfterTenIdleBatches()
    {
        const RunningLink link;
        Peer peer;
        QVERIFY(peer.connectTo(link.port));
        QVERIFY(peer.send("HMDINFOBACK\tS;N;true;x\nHello\n"));
        QCOMPARE(peer.receiveText(), QByteArray("HHHH, You can see me!\n"));
        for (int batch = 1; batch <= 9; ++batch)
            QVERIFY(peer.greet());
        QCOMPARE(link.manager->hmdInfoList().size(), 1);
        QVERIFY(peer.greet());
        // The answer is out before the batch is counted, the next one after it.
        QVERIFY(peer.greet());
        QCOMPARE(link.manager->hmdInfoList(), HeadsetList());
    }

    void asksForTheFirewallRule()
    {
        const RunningLink link;
        Peer peer;
        QVERIFY(link.join(&peer));
        link.manager->setRegisterFirewallPending();
        QVERIFY(peer.greet());
        QVERIFY(peer.send("HMDINFOBACK\nHMDINFOBACK\n"));
        QCOMPARE(peer.receiveText(), QByteArray("RegisterFireWall"));
        QVERIFY(peer.greet());
        QCOMPARE(link.echoed().count("RegisterFireWall"), 1);
        QCOMPARE(loggedCount("RegisterFireWall"), 1);
    }

    void letsTheProgramAskWhileARestartBlocks()
    {
        BlockingRestart restart;
        const RunningLink link(restart.handler());
        Peer peer;
        QVERIFY(peer.connectTo(link.port));
        QVERIFY(peer.send("HMDINFOBACK\tdeviceId:A~S;N;true;x\nRESTARTSTEAMVR\nHello\n"));
        QVERIFY(restart.begun.acquire());
        QVERIFY(restart.thread != std::this_thread::get_id());
        QVERIFY(link.manager->hasClient());
        QCOMPARE(link.manager->deviceId(), QString("A"));
        QCOMPARE(link.manager->hmdInfoList().size(), 1);
        link.manager->setRegisterFirewallPending();
        QVERIFY(link.echoed().isEmpty());
        restart.end.release();
        QCOMPARE(peer.receiveText(), QByteArray("HHHH, You can see me!\n"));
        QCOMPARE(restart.begun.available(), 0);
    }

    void sendsAfterTheRestartWhatWasAskedForMeanwhile()
    {
        BlockingRestart restart;
        const RunningLink link(restart.handler());
        Peer peer;
        QVERIFY(peer.connectTo(link.port));
        QVERIFY(peer.send("RESTARTSTEAMVR\nHello\n"));
        QVERIFY(restart.begun.acquire());
        link.manager->requestHmdInfo();
        link.manager->linkTo("S", "A");
        restart.end.release();
        QCOMPARE(peer.receiveText(), QByteArray("HMDInfoRequest"));
        QCOMPARE(peer.receiveText(), QByteArray("LinkTo S A "));
        QCOMPARE(peer.receiveText(), QByteArray("HHHH, You can see me!\n"));
    }

    void sendsNothingMeantForAnEarlierServer()
    {
        BlockingRestart restart;
        const RunningLink link(restart.handler());
        Peer first;
        QVERIFY(first.connectTo(link.port));
        QVERIFY(first.send("RESTARTSTEAMVR\n"));
        QVERIFY(restart.begun.acquire());
        // Asked for while the first is connected, in the worker's hands only when
        // it is gone.
        first.close();
        link.manager->requestHmdInfo();
        Peer second;
        QVERIFY(second.connectTo(link.port));
        restart.end.release();
        QVERIFY(second.greet());
    }

    void worksWithoutAPort()
    {
        const RunningLink first;
        CapturedStreams streams;
        bool restarted = false;
        SysManager second([&] { restarted = true; }, first.port);
        QVERIFY(!second.start());
        QVERIFY(streams.error().startsWith("ControlSocket::Startup bind error : "));
        QCOMPARE(streams.info(), QString());
        QVERIFY(!second.hasClient());
        QCOMPARE(second.hmdInfoList(), HeadsetList{HeadsetRecord()});
        QCOMPARE(second.deviceId(), QString());
        QVERIFY(!second.isDeviceConnected());
        second.setRegisterFirewallPending();
        second.linkTo("S", "A");
        second.disconnect("S", "A");
        second.requestHmdInfo();
        QCOMPARE(streams.echo(), echoPrefix + "HMDInfoRequest\n");
        QCOMPARE(second.wakeUps(), quint64(0));
        QVERIFY(!restarted);
    }

    void sendsWhatIsLeftBeforeItEnds()
    {
        for (int round = 0; round < 50; ++round) {
            RunningLink link;
            Peer peer;
            QVERIFY(link.join(&peer));
            link.manager->requestHmdInfo();
            link.manager->disconnect("S", "A");
            link.manager.reset();
            QCOMPARE(peer.receiveText(), QByteArray("HMDInfoRequest"));
            QCOMPARE(peer.receiveText(), QByteArray("Disconnect S A "));
        }
    }

    void sendsWhatIsLeftWhenItEndsInARestart()
    {
        BlockingRestart restart;
        RunningLink link(restart.handler());
        Peer peer;
        QVERIFY(peer.connectTo(link.port));
        QVERIFY(peer.send("RESTARTSTEAMVR\n"));
        QVERIFY(restart.begun.acquire());
        link.manager->disconnect("S", "A");
        std::thread end([&link] { link.manager.reset(); });
        // Enough for the end to begin; it cannot get far.
        const bool silent = peer.isSilentFor(50);
        restart.end.release();
        end.join();
        QVERIFY(silent);
        QCOMPARE(peer.receiveText(), QByteArray("Disconnect S A "));
        QVERIFY(peer.waitForEnd());
    }

    void endsWithoutHavingStarted()
    {
        const CapturedStreams streams;
        {
            const SysManager manager({}, freePort());
        }
        QCOMPARE(streams.info() + streams.error() + streams.echo(), QString());
    }

    void closesTheServersConnectionAtTheEnd()
    {
        RunningLink link;
        Peer peer;
        QVERIFY(link.join(&peer));
        const QString info = link.streams.info();
        link.manager.reset();
        QVERIFY(peer.waitForEnd());
        QCOMPARE(link.streams.info(), info);
        Peer late;
        QVERIFY(!late.connectTo(link.port));
    }

    void sleepsWhileNothingHappens()
    {
        const RunningLink link;
        Peer peer;
        QVERIFY(link.join(&peer));
        const quint64 before = link.manager->wakeUps();
        QVERIFY(peer.isSilentFor(300));
        QCOMPARE(link.manager->wakeUps(), before);
        QVERIFY(peer.greet());
        QVERIFY(link.manager->wakeUps() > before);
    }
};

KOLM_TEST_MAIN(SysManagerTest)
#include "tst_sys_manager.moc"
