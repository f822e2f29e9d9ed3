#include "tests/controller/parts_fixture.h"
#include "tests/support/test_case.h"

namespace {

// A flow that looks again whenever it wants to, and writes down what it says.
struct Flow : PartsFixture
{
    explicit Flow(const QString &folder) : PartsFixture(folder)
    {
        QObject::connect(&flow, &ConnectionFlow::connectionChanged,
                         [this] { said << (flow.isConnected() ? "connected" : "unconnected"); });
        QObject::connect(&flow, &ConnectionFlow::listShown, [this](bool connected, bool byUser) {
            said << QStringLiteral("list(%1,%2)").arg(connected).arg(byUser);
        });
        QObject::connect(&flow, &ConnectionFlow::severalHeadsets, [this] { said << "several"; });
        QObject::connect(&flow, &ConnectionFlow::settingsLoaded, [this] { said << "settings"; });
        QObject::connect(&flow, &ConnectionFlow::stepDue, [this] { flow.stepWireless(); });
    }

    // One tick of the poll.
    void tick()
    {
        if (flow.requestReport(LinkKind::Wireless))
            flow.stepWireless();
    }

    QStringList sent()
    {
        QStringList commands = server.received;
        commands.removeAll("HMDInfoRequest");
        return commands;
    }
};

} // namespace

class TestConnectionFlow : public TestCase
{
    Q_OBJECT

private slots:
    void theOnlyHeadsetIsConnectedByItself()
    {
        Flow f(dir());
        f.server.headsets = {{"D3A", "10.0.0.7", false}};
        clearLog();
        f.tick();
        QCOMPARE(f.sent(), QStringList{"LinkTo D3A 10.0.0.7 "});
        QCOMPARE(loggedCount("vr first connect"), 1);
        QCOMPARE(loggedCount("connect VR"), 1);
        QCOMPARE(f.said, QStringList({"settings", "list(0,0)"}));
        QCOMPARE(f.flow.wantedSerial(), QString("D3A"));
        QCOMPARE(f.flow.recentHeadsets(), QStringList{"D3A"});
        QVERIFY(!f.flow.isConnected());

        f.said.clear();
        f.clock.advance(999);
        QVERIFY(f.said.isEmpty());
        f.clock.advance(1);
        QCOMPARE(f.said, QStringList({"settings", "list(1,0)", "connected"}));
        QCOMPARE(loggedCount("vr reconnect sn from:  to D3A"), 1);
        QCOMPARE(f.flow.connectedSerial(), QString("D3A"));
    }

    void theTickAfterAConnectIsLeftOut()
    {
        Flow f(dir());
        f.server.headsets = {{"D3A", "10.0.0.7", false}};
        f.tick();
        const int asked = f.server.received.size();
        QVERIFY(!f.flow.requestReport(LinkKind::Wireless));
        QCOMPARE(f.server.received.size(), asked);
        QVERIFY(f.flow.requestReport(LinkKind::Wireless));
        QCOMPARE(f.server.received.size(), asked + 1);
    }

    void aHeadsetWithoutAddressOrAlreadyConnectedIsNotConnected_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("connected");
        QTest::newRow("no address") << "" << false;
        QTest::newRow("connected") << "10.0.0.7" << true;
    }
    void aHeadsetWithoutAddressOrAlreadyConnectedIsNotConnected()
    {
        QFETCH(QString, address);
        QFETCH(bool, connected);
        Flow f(dir());
        f.server.headsets = {{"D3A", address, connected}};
        f.tick();
        QVERIFY(f.sent().isEmpty());
        QCOMPARE(f.said, QStringList{"list(0,0)"});
        // The first contact is still to come.
        f.server.headsets = {{"D3A", "10.0.0.7", false}};
        f.tick();
        QCOMPARE(f.sent(), QStringList{"LinkTo D3A 10.0.0.7 "});
    }

    void ofSeveralHeadsetsTheUserChoosesAndIsAskedOnce()
    {
        Flow f(dir());
        f.server.headsets = {{"D3A", "10.0.0.7", false}, {"D3B", "10.0.0.8", false}};
        f.tick();
        f.tick();
        f.tick();
        QVERIFY(f.sent().isEmpty());
        QCOMPARE(f.said.count("several"), 1);
        QCOMPARE(f.model.firstName(), QString("D3B"));

        f.flow.connectHeadset("D3A", "10.0.0.7", true);
        QCOMPARE(f.sent(), QStringList{"LinkTo D3A 10.0.0.7 "});
        f.clock.advance(1000);
        QCOMPARE(f.flow.connectedSerial(), QString("D3A"));
        QVERIFY(f.flow.isConnected());
    }

    void aHeadsetThatDropsOutAndReturnsIsConnectedAgain()
    {
        Flow f(dir());
        f.server.headsets = {{"D3A", "10.0.0.7", false}};
        f.tick();
        f.clock.advance(1000);
        QVERIFY(f.flow.isConnected());
        f.tick(); // left out

        f.server.headsets.clear();
        f.said.clear();
        f.tick();
        QCOMPARE(f.said, QStringList({"list(0,0)", "unconnected"}));
        QCOMPARE(f.flow.wantedSerial(), QString("D3A"));

        f.server.received.clear();
        f.server.headsets = {{"D3B", "10.0.0.8", false}, {"D3A", "10.0.0.9", false}};
        f.tick();
        QCOMPARE(f.sent(), QStringList{"LinkTo D3A 10.0.0.9 "});
        QCOMPARE(loggedCount("vr reconnect: D3A"), 1);
        f.clock.advance(1000);
        QVERIFY(f.flow.isConnected());
    }

    void aConnectedHeadsetBeforeTheOneToReconnectIsTaken()
    {
        Flow f(dir());
        f.server.headsets = {{"D3A", "10.0.0.7", false}};
        f.tick();
        f.tick();
        f.server.headsets = {{"D2X", "10.0.0.2", true}, {"D3A", "10.0.0.7", false}};
        f.server.received.clear();
        f.tick();
        QVERIFY(f.sent().isEmpty());
        QCOMPARE(f.flow.connectedSerial(), QString("D2X"));
        QCOMPARE(f.flow.knownSerial(), QString("D2X"));
        QCOMPARE(f.flow.wantedSerial(), QString("D2X"));
        QCOMPARE(f.config.serial(), QString("D2X"));
    }

    void theOneToReconnectBeforeAConnectedHeadsetEndsTheWalk()
    {
        Flow f(dir());
        f.server.headsets = {{"D3A", "10.0.0.7", false}};
        f.server.obeys = false;
        f.tick();
        f.tick();
        f.server.headsets = {{"D3A", "10.0.0.7", false}, {"D2X", "10.0.0.2", true}};
        f.server.received.clear();
        f.tick();
        QCOMPARE(f.sent(), QStringList{"LinkTo D3A 10.0.0.7 "});
        QCOMPARE(f.flow.connectedSerial(), QString());
    }

    void afterTheUserDisconnectedNothingReconnectsByItself()
    {
        Flow f(dir());
        f.server.headsets = {{"D3A", "10.0.0.7", false}};
        f.tick();
        f.clock.advance(1000);
        f.tick();
        f.server.received.clear();
        f.said.clear();

        f.flow.connectHeadset("D3A", "10.0.0.7", false);
        QCOMPARE(f.sent(), QStringList{"Disconnect D3A 10.0.0.7 "});
        f.clock.advance(1000);
        QCOMPARE(f.said, QStringList({"list(0,1)", "unconnected"}));
        f.server.received.clear();
        for (int i = 0; i < 5; ++i)
            f.tick();
        QVERIFY(f.sent().isEmpty());

        f.flow.connectHeadset("D3A", "10.0.0.7", true);
        f.clock.advance(1000);
        QVERIFY(f.flow.isConnected());
        QVERIFY(!f.flow.disconnectedByUser());
    }

    void changingHeadsetsLetsTheOldOneGoFirst()
    {
        Flow f(dir());
        f.server.headsets = {{"D3A", "10.0.0.7", false}};
        f.tick();
        f.clock.advance(1000);
        f.server.headsets.append({"D3B", "10.0.0.8", false});
        f.server.received.clear();
        clearLog();
        const qint64 slept = f.clock.slept();
        f.flow.connectHeadset("D3B", "10.0.0.8", true);
        QCOMPARE(f.sent(), QStringList({"Disconnect D3A 10.0.0.7 ", "LinkTo D3B 10.0.0.8 "}));
        QCOMPARE(f.clock.slept() - slept, 200);
        QCOMPARE(logged().first(), QString("connect VRD3A"));
        QCOMPARE(f.flow.recentHeadsets(), QStringList({"D3B", "D3A"}));
    }

    void aKnownHeadsetKeepsItsPlaceAmongTheRecentOnes()
    {
        Flow f(dir());
        f.flow.setRecentHeadsets({"D3B", "D3A", "d3a"});
        f.flow.connectHeadset("D3A", "10.0.0.7", true);
        QCOMPARE(f.flow.recentHeadsets(), QStringList({"D3B", "D3A", "d3a"}));
        f.flow.connectHeadset("D3a", "10.0.0.7", true);
        QCOMPARE(f.flow.recentHeadsets(), QStringList({"D3a", "D3B", "D3A", "d3a"}));
    }

    void everyAskGivesTheServerTimeToAnswer()
    {
        Flow f(dir());
        QVERIFY(f.flow.requestReport(LinkKind::Wireless));
        QCOMPARE(f.clock.slept(), 200);
        QCOMPARE(f.server.received, QStringList{"HMDInfoRequest"});
        QVERIFY(f.flow.requestReport(LinkKind::Wired));
        QCOMPARE(f.server.received.last(), QString("WiredConnect"));
    }

    void theReportedSerialGoesToTheDescriptionOfThePc()
    {
        Flow f(dir());
        f.server.headsets = {{"D3A", "10.0.0.7", true}};
        f.server.reportedId = "D3Z";
        f.tick();
        QCOMPARE(f.flow.knownSerial(), QString("D3Z"));
        QCOMPARE(f.system.toJson().value("deciveSN").toString(), QString("D3Z"));
    }

    void withoutAServerNoHeadsetIsKnownAndNothingFails()
    {
        Flow f(dir());
        f.server.present = false;
        f.tick();
        QCOMPARE(f.said, QStringList{"list(0,0)"});
        QCOMPARE(f.model.rowCount(), 0);
        f.flow.setLink(nullptr);
        f.tick();
        f.flow.connectHeadset("D3A", "10.0.0.7", true);
        f.clock.advance(1000);
        QVERIFY(!f.flow.isConnected());
    }

    void forgettingLetsTheFirstContactRuleApplyAgain()
    {
        Flow f(dir());
        f.server.headsets = {{"D3A", "10.0.0.7", false}, {"D3B", "10.0.0.8", false}};
        f.tick();
        f.flow.forgetHeadset();
        f.tick();
        QCOMPARE(f.said.count("several"), 2);
    }

    void inWiredModeTheServersWordAndSteamVRDecide_data()
    {
        QTest::addColumn<bool>("answer");
        QTest::addColumn<bool>("steamVR");
        QTest::addColumn<bool>("connected");
        QTest::newRow("both") << true << true << true;
        QTest::newRow("no SteamVR") << true << false << false;
        QTest::newRow("not connected") << false << true << false;
    }
    void inWiredModeTheServersWordAndSteamVRDecide()
    {
        QFETCH(bool, answer);
        QFETCH(bool, steamVR);
        QFETCH(bool, connected);
        Flow f(dir());
        f.server.usbConnected = answer;
        QVERIFY(f.flow.requestReport(LinkKind::Wired));
        f.flow.stepWired(steamVR);
        QCOMPARE(f.flow.isConnected(), connected);
        QCOMPARE(f.said, QStringList{connected ? "connected" : "unconnected"});
    }
};

KOLM_TEST_MAIN(TestConnectionFlow)
#include "tst_connection_flow.moc"
