#include "controller/connection_stages.h"
#include "controller/connection_status.h"
#include "tests/controller/controller_test.h"

#include <QMetaEnum>

using connection::State;

namespace {

const HeadsetList one{{"D3A", "10.0.0.7", false}};
const HeadsetList two{{"D3A", "10.0.0.7", false}, {"D3B", "10.0.0.8", false}};

// A controller with a stored link, whose states are written down as they come.
struct Tracked : ControllerFixture
{
    explicit Tracked(const QString &folder) : ControllerFixture(folder, steamRunning())
    {
        QObject::connect(&status(), &ConnectionStatus::changed, [this] { note(); });
    }

    // Its end is one more stop of SteamVR.
    ~Tracked() { status().disconnect(); }

    ConnectionStatus &status() { return orb().status(); }
    State state() { return status().state(); }
    bool stage(Stage stage) { return orb().stages().reached(stage); }

    void note()
    {
        const QString now = QMetaEnum::fromType<State>().valueToKey(static_cast<int>(state()));
        if (states.isEmpty() || states.last() != now)
            states << now;
    }
    // The states since the last call.
    QStringList taken() { return std::exchange(states, {}); }

    // Until SteamVR runs and the headset of this link is connected.
    void connectHeadset()
    {
        pass(20000);
        QCOMPARE(state(), State::Connected);
        QVERIFY(orb().vrIsConnect());
        taken();
    }

    QStringList states;
};

} // namespace

// What the pages are told, with the real parts behind it.
class TestConnectionTracker : public ControllerTest
{
    Q_OBJECT

private slots:
    void theOnlyHeadsetIsFoundAndConnected()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.present = false;
        t.pass(10000);
        QCOMPARE(t.state(), State::NoServer);
        t.taken();
        t.server.present = true;
        t.pass(5000);
        QCOMPARE(t.state(), State::Searching);
        QVERIFY(!t.status().headsetFound());
        t.server.headsets = one;
        t.pass(5000);
        QCOMPARE(t.state(), State::Linking);
        QVERIFY(t.status().headsetFound());
        t.pass(1000);
        QCOMPARE(t.taken(), QStringList({"Searching", "Linking", "Connected"}));
    }

    void theServersProgramIsNamedWhileItIsConnected()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.headsets = one;
        t.pass(5000);
        QCOMPARE(t.status().serverProgram(), QString()); // the PC does not say
        t.server.program = ControlPort::Holder{4711, "vrserver.exe"};
        t.pass(5000);
        QCOMPARE(t.status().serverProgram(), QString("vrserver.exe (4711)"));
        t.server.present = false;
        t.pass(5000);
        QCOMPARE(t.status().serverProgram(), QString());
    }

    void ofSeveralTheUserIsAskedAndTheChoiceCountsAtOnce()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.headsets = two;
        t.pass(15000);
        QCOMPARE(t.state(), State::AskingUser);
        t.orb().connectVR("D3B", "10.0.0.8");
        QCOMPARE(t.state(), State::Linking);
        t.pass(1000);
        QCOMPARE(t.state(), State::Connected);
    }

    void aHeadsetThatDoesNotObeyIsStillBeingConnected()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.headsets = two;
        t.server.obeys = false;
        t.pass(15000);
        t.orb().connectVR("D3B", "10.0.0.8");
        t.pass(30000);
        QCOMPARE(t.state(), State::Linking);
        QVERIFY(!t.orb().vrIsConnect());
    }

    void aHeadsetThatDropsOutIsLostAndComesBack()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.headsets = one;
        t.connectHeadset();
        t.server.headsets = {{"D3B", "10.0.0.8", false}};
        t.pass(10000);
        QCOMPARE(t.taken(), QStringList{"Lost"}); // and the other one is left alone
        t.server.headsets = one;
        t.pass(10000);
        QCOMPARE(t.taken(), QStringList({"Linking", "Connected"}));
    }

    void lettingGoCountsAtOnceAndLasts()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.headsets = one;
        t.connectHeadset();
        t.orb().connectVR("", "", false);
        QCOMPARE(t.state(), State::LetGo);
        QVERIFY(t.orb().vrIsConnect()); // until the next look
        QVERIFY(!t.stage(Stage::Linked));
        t.pass(20000);
        QCOMPARE(t.taken(), QStringList{"LetGo"});
        t.server.headsets.clear();
        t.pass(10000);
        QCOMPARE(t.state(), State::LetGo);
        t.server.headsets = one;
        t.orb().connectVR("D3A", "10.0.0.7");
        t.pass(2000);
        QCOMPARE(t.state(), State::Connected);
    }

    void anotherHeadsetIsNotConnectedBecauseTheLastOneIs()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.headsets = one;
        t.connectHeadset();
        t.server.headsets = {{"D3A", "10.0.0.7", true}, {"D3B", "10.0.0.8", false}};
        t.pass(5000);
        t.orb().connectVR("D3B", "10.0.0.8");
        QCOMPARE(t.state(), State::Linking);
        QVERIFY(t.orb().vrIsConnect());
        t.pass(2000);
        QCOMPARE(t.taken(), QStringList({"Linking", "Connected"}));
    }

    void theCableFromEmptyToConnectedAndBack()
    {
        store(LinkKind::Wired);
        Tracked t(dir());
        t.pass(15000);
        QCOMPARE(t.state(), State::Searching);
        emit t.adb.deviceConnect(true, "D3USB");
        QCOMPARE(t.state(), State::Linking);
        t.server.usbConnected = true;
        t.pass(5000);
        QCOMPARE(t.state(), State::Connected);
        emit t.adb.deviceConnect(false, QString());
        t.server.usbConnected = false;
        t.pass(5000);
        QCOMPARE(t.state(), State::Lost);
        QVERIFY(!t.status().headsetFound());
        emit t.adb.deviceConnect(true, "D3USB");
        QCOMPARE(t.taken(), QStringList({"Linking", "Connected", "Lost", "Linking"}));
    }

    void onTheCableTheServersWordIsEnough()
    {
        store(LinkKind::Wired);
        Tracked t(dir());
        t.server.usbConnected = true;
        t.connectHeadset();
        QVERIFY(t.status().headsetFound()); // adb found none
    }

    // What the polls find out may take seconds, or never change.
    void fromCableToWifiNothingIsConnectedAnyMore()
    {
        store(LinkKind::Wired);
        Tracked t(dir());
        t.server.usbConnected = true;
        t.pass(1000);
        emit t.adb.deviceConnect(true, "D3USB");
        t.connectHeadset();
        t.orb().setProperty("wired", false);
        QCOMPARE(t.taken(), QStringList{"NoServer"});
        QVERIFY(!t.status().headsetFound());
        for (const auto stage : {Stage::SteamVR, Stage::Server, Stage::Headset, Stage::Linked})
            QVERIFY(!t.stage(stage));
        QVERIFY(t.stage(Stage::Steam));
        // The older property says what it said until a headset is connected.
        QVERIFY(t.orb().vrIsConnect());
        announceMisses(4);
        t.pass(60000);
        QVERIFY(t.orb().vrIsConnect());
        QCOMPARE(t.taken(), QStringList{"Searching"});

        t.server.headsets = one;
        t.pass(10000);
        QCOMPARE(t.taken(), QStringList({"Linking", "Connected"}));
    }

    void fromWifiToAnEmptyCableItIsEmptyEachTime()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.headsets = one;
        t.connectHeadset();
        announceMisses(4);
        t.orb().setProperty("wired", true);
        QVERIFY(!t.status().headsetFound());
        emit t.adb.deviceConnect(false, QString()); // its first answer
        t.pass(20000);
        QCOMPARE(t.state(), State::Searching);
        QVERIFY(!t.orb().hasEnumdevices());
        announceMisses(3);
        t.server.headsets = one; // it went with SteamVR
        t.orb().setProperty("wired", false);
        t.connectHeadset();

        announceMisses(4);
        t.orb().setProperty("wired", true); // adb has nothing new to say
        QVERIFY(!t.status().headsetFound());
        t.pass(30000);
        QCOMPARE(t.state(), State::Searching);
        QVERIFY(!t.status().headsetFound());
        QVERIFY(!t.stage(Stage::Headset));
        QVERIFY(t.orb().hasEnumdevices()); // the one of the Wi-Fi, to this day
    }

    void fromWifiBackToTheCableTheHeadsetOnItIsKnown()
    {
        store(LinkKind::Wired);
        Tracked t(dir());
        t.pass(1000);
        emit t.adb.deviceConnect(true, "D3USB");
        t.pass(15000);
        announceMisses(4);
        t.orb().setProperty("wired", false);
        QVERIFY(!t.status().headsetFound());
        t.pass(20000);
        announceMisses(4);
        t.orb().setProperty("wired", true); // adb does not repeat what it said
        QVERIFY(!t.orb().hasEnumdevices());
        t.pass(20000);
        QCOMPARE(t.state(), State::Linking);
        QVERIFY(t.status().headsetFound());
    }

    void aCableThatChangesDuringWifiIsKnownAfterwards()
    {
        store(LinkKind::Wired);
        Tracked t(dir());
        t.pass(1000);
        emit t.adb.deviceConnect(true, "D3USB");
        t.pass(15000);
        announceMisses(4);
        t.orb().setProperty("wired", false);
        t.pass(20000);
        emit t.adb.deviceConnect(false, QString());
        announceMisses(4);
        t.orb().setProperty("wired", true);
        t.pass(20000);
        QCOMPARE(t.state(), State::Searching);
    }

    void whateverStopsSteamVREndsTheConnectionAtOnce_data()
    {
        QTest::addColumn<QString>("how");
        for (const char *how : {"settings", "the update", "the streaming server"})
            QTest::newRow(how) << QString(how);
    }
    void whateverStopsSteamVREndsTheConnectionAtOnce()
    {
        QFETCH(QString, how);
        store(LinkKind::Wired);
        Tracked t(dir());
        t.server.usbConnected = true;
        t.connectHeadset();
        if (how == "settings")
            t.orb().setEffects(1, 1, 1, false, false, false, false);
        else if (how == "the update")
            t.orb().stopSteam();
        else
            t.steam.restartSteamVR();
        QCOMPARE(t.taken(), QStringList{"NoServer"});
        QVERIFY(!t.stage(Stage::SteamVR));
        QVERIFY(!t.stage(Stage::Linked));
        QVERIFY(t.orb().vrIsConnect());
    }

    // The polls may miss a short stop altogether.
    void steamVRIsBackAsSoonAsItWasStarted()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.headsets = one;
        t.connectHeadset();
        t.steam.stopSteamVR();
        QVERIFY(!t.stage(Stage::SteamVR));
        QVERIFY(t.orb().haslaunchSteamVR());
        t.steam.startSteamVR();
        QVERIFY(t.stage(Stage::SteamVR));
        announceMisses(1);
        t.pass(20000);
        QCOMPARE(t.state(), State::Connected);
    }

    void whatAServerBeforeTheRestartSaidCountsNoMore()
    {
        store(LinkKind::Wired);
        Tracked t(dir());
        t.server.usbConnected = true;
        t.connectHeadset();
        announceMisses(3);
        t.orb().setEffects(1, 1, 1, false, false, false, false);
        t.server.present = false;
        t.pass(12000);
        t.server.present = true;
        t.server.answers = false; // it takes its time
        t.pass(15000);
        QVERIFY(t.orb().vrIsConnect());
        QCOMPARE(t.state(), State::Searching);
        t.server.answers = true;
        t.pass(5000);
        QCOMPARE(t.state(), State::Connected);
    }

    void aServerThatIsGoneIsNoticedByTheNextPoll()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.headsets = one;
        t.connectHeadset();
        t.server.present = false;
        t.pass(5000);
        QCOMPARE(t.taken(), QStringList{"NoServer"});
    }

    // What is announced is drawn.
    void nothingIsAnnouncedWithoutNews()
    {
        store(LinkKind::Wireless);
        Tracked t(dir());
        t.server.headsets = one;
        t.connectHeadset();
        int announced = 0;
        QObject::connect(&t.status(), &ConnectionStatus::changed, [&] { ++announced; });
        t.pass(30000);
        QCOMPARE(announced, 0);
    }
};

KOLM_TEST_MAIN(TestConnectionTracker)
#include "tst_connection_tracker.moc"
