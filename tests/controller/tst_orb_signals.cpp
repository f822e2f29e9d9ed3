#include "tests/controller/controller_test.h"

namespace {

const QString listCommand = QStringLiteral("adb devices && adb forward --list");

const HeadsetList twoHeadsets{{"D3A", "10.0.0.7", false}, {"D3B", "10.0.0.8", false}};

} // namespace

// What the parts of the controller find out reaches the pages through it, and
// what its modes do reaches adb.
class TestOrbSignals : public ControllerTest
{
    Q_OBJECT

private slots:
    void steamAndSteamVRAreAnnouncedWhenTheyChange()
    {
        ControllerFixture f(dir(), steamRunning());
        f.orb().setProperty("wired", false);
        QCOMPARE(f.count("steamStateChange"), 1); // found, which nobody knew
        QCOMPARE(f.orb().steamState(), ORBManager::Pass);
        QCOMPARE(f.count("haslaunchSteamChange"), 0);
        f.pass(20000);
        QVERIFY(f.orb().haslaunchSteam());
        QVERIFY(f.orb().haslaunchSteamVR());
        QCOMPARE(f.count("haslaunchSteamChange"), 1);
        QCOMPARE(f.count("haslaunchSteamVRChange"), 1);
        QCOMPARE(f.count("steamStateChange"), 1);
    }

    void aSteamThatIsNotInstalledPassesWhileItRuns()
    {
        SteamOptions options;
        options.steamInstalled = false;
        ControllerFixture f(dir(), options, [](SimPc &pc) { pc.processes.start("steam.exe"); });
        f.orb().setProperty("wired", false);
        QCOMPARE(f.count("steamStateChange"), 0);
        QCOMPARE(f.orb().steamState(), ORBManager::NoneSteam);
        f.clock.advance(1000);
        QCOMPARE(f.count("steamStateChange"), 1);
        QCOMPARE(f.orb().steamState(), ORBManager::Pass);
    }

    void launchingSpeaksToTheUser()
    {
        ControllerFixture f(dir(), steamRunning());
        f.orb().launchSteam(true);
        QCOMPARE(f.emitted,
                 QStringList({"haslaunchSteamVRChange",
                              "showToast(正在准备打开或者安装SteamVR,确保已登录steam,2000)"}));
        f.emitted.clear();
        f.orb().launchSteam();
        QCOMPARE(f.emitted,
                 QStringList({"showToast(正在登录steam，请稍等,15000)", "haslaunchSteamChange"}));
    }

    void aChoiceOfTheModeSpeaksToTheUser()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.orb().setProperty("wired", true);
        QCOMPARE(f.toasts(), QStringList{"showToast(切换模式中，请稍后再试,2000)"});
        QCOMPARE(f.count("wiredChange"), 0);
        f.clock.advance(4000);
        f.emitted.clear();
        f.orb().setProperty("wired", true);
        QCOMPARE(f.toasts(), QStringList{"showToast(正在重启，请稍候,13000)"});
        QCOMPARE(f.count("wiredChange"), 1);
    }

    void theSoundIsWarnedOfAtEachPoll()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.pc.facts.waveOuts.set({});
        f.orb();
        f.clock.advance(5000);
        const QStringList warning{
            "showToast(当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备,"
            "2000)"};
        QCOMPARE(f.toasts(), warning);
        f.clock.advance(5000);
        QCOMPARE(f.toasts(), warning + warning);
    }

    void onBatteryTheUserIsToldOnceAndOnMainsOnceAgain()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.clock.advance(5000);
        QCOMPARE(f.count("showPowerTip") + f.count("closePowerTip"), 0);
        f.pc.facts.acLine.set(power::AcLine::Offline);
        f.pass(15000);
        QCOMPARE(f.count("showPowerTip"), 1);
        QCOMPARE(f.count("closePowerTip"), 0);
        f.pc.facts.acLine.set(power::AcLine::Online);
        f.pass(15000);
        QCOMPARE(f.count("showPowerTip"), 1);
        QCOMPARE(f.count("closePowerTip"), 1);
    }

    void aPublicNetworkIsPromptedForOnce()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning(),
                            [](SimPc &pc) { pc.facts.network.set({"Public"}); });
        QTRY_COMPARE(f.system.networkCategory(), QString("Public"));
        f.orb();
        f.pass(15000);
        QCOMPARE(f.count("showNetWorkSetting"), 1);
    }

    void severalHeadsetsAreShownOnceAndAgainAfterTheCable()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.server.headsets = twoHeadsets;
        f.orb();
        f.pass(15000);
        QCOMPARE(f.count("showMoreHMD"), 1);
        QVERIFY(!f.orb().vrIsConnect());

        f.emitted.clear();
        announceMisses(4);
        f.orb().setProperty("wired", true);
        f.pass(20000);
        QCOMPARE(f.count("showMoreHMD"), 0);
        // A new contact: the user is to choose again.
        announceMisses(3);
        f.orb().setProperty("wired", false);
        f.pass(20000);
        QCOMPARE(f.count("showMoreHMD"), 1);
        QVERIFY(!f.server.received.join(' ').contains("LinkTo"));
    }

    void theHeadsetOfTheCableIsForgottenWithIt()
    {
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        emit f.adb.deviceConnect(true, "D2USB");
        QVERIFY(f.orb().hasEnumdevices());
        f.clock.advance(4000);
        f.pc.processes.start("adb.exe");
        f.orb().setProperty("wired", false);
        QVERIFY(!f.orb().hasEnumdevices());
        QVERIFY(!f.pc.processes.isRunning("adb.exe"));
    }

    void adbIsAskedAtOnceWhenTheCableIsChosen_data()
    {
        QTest::addColumn<LinkKind>("stored");
        QTest::newRow("at the start") << LinkKind::Wired;
        QTest::newRow("later") << LinkKind::Wireless;
    }
    void adbIsAskedAtOnceWhenTheCableIsChosen()
    {
        QFETCH(LinkKind, stored);
        store(stored);
        ControllerFixture f(dir(), steamRunning());
        QCOMPARE(f.adbLines, QStringList{"adb --version"});
        f.adb.take("Android Debug Bridge version 1.0.41\r\n");
        f.adbLines.clear();
        f.orb();
        if (stored == LinkKind::Wireless) {
            f.clock.advance(4000);
            QCOMPARE(f.adbLines, QStringList());
            // The poll, late after the stop of SteamVR, asks a little later.
            announceMisses(1);
            f.orb().setProperty("wired", true);
        }
        f.clock.advance(799);
        QCOMPARE(f.adbLines, QStringList());
        f.clock.advance(1);
        QCOMPARE(f.adbLines, QStringList{listCommand});
    }

    void anAdbThatDoesNotAnswerGetsItsGraceFromTheChoice()
    {
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning());
        f.orb(); // begins the grace
        f.clock.advance(400);
        f.adbLines.clear();
        // With the grace behind it the first poll takes the shipped adb.
        f.clock.advance(4600);
        QCOMPARE(loggedCount("use ORBHelper adb"), 1);
        f.clock.advance(800);
        QCOMPARE(f.adbLines.size(), 1);
    }

    void eachPollOnTheCableAsksAdbAgain()
    {
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning());
        f.adb.take("Android Debug Bridge version 1.0.41\r\n");
        f.adbLines.clear();
        f.orb();
        f.clock.advance(800);
        f.adb.take("List of devices attached\r\n\r\n");
        f.clock.advance(600);
        f.adbLines.clear();
        f.clock.advance(5000);
        QCOMPARE(f.adbLines, QStringList{listCommand});
    }

    void overWifiAdbIsLeftAlone()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.adb.take("Android Debug Bridge version 1.0.41\r\n");
        f.adbLines.clear();
        f.orb();
        f.pass(20000);
        QCOMPARE(f.adbLines, QStringList());
    }
};

KOLM_TEST_MAIN(TestOrbSignals)
#include "tst_orb_signals.moc"
