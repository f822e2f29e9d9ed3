#include "checks/check_runner.h"
#include "checks/steam_watch.h"
#include "checks/table.h"
#include "controller/connection_flow.h"
#include "controller/connection_stages.h"
#include "controller/connection_status.h"
#include "controller/connection_tracker.h"
#include "controller/poll.h"
#include "controller/usb_headset.h"
#include "controller/vr_list_model.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

namespace {

const QString audioWarning =
    "toast(当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备,2000)";

struct Polled
{
    explicit Polled(const QString &dir, bool steamRuns = true)
        : pc(dir, steamThatIs(true, steamRuns))
    {
        pc.config.loadDeviceSettings(false, 0);
        flow.setLink(&pc.server);
        const auto say = [this](const char *what) { return [this, what] { said << what; }; };
        QObject::connect(&steam, &SteamWatch::steamRunningChanged, say("steam"));
        QObject::connect(&steam, &SteamWatch::steamVRRunningChanged, say("steamVR"));
        QObject::connect(&flow, &ConnectionFlow::connectionChanged, say("connection"));
        QObject::connect(&flow, &ConnectionFlow::listShown, say("list"));
        QObject::connect(&poll, &Poll::publicNetwork, say("publicNetwork"));
        QObject::connect(&poll, &Poll::powerTip,
                         [this](bool show) { said << (show ? "powerTip" : "closePowerTip"); });
        QObject::connect(&poll, &Poll::toast, [this](const QString &text, int duration) {
            said << QStringLiteral("toast(%1,%2)").arg(text).arg(duration);
        });
    }

    void useCable()
    {
        kind = LinkKind::Wired;
        tracker.linkChanged(kind);
    }

    QStringList run()
    {
        said.clear();
        poll.run(kind);
        return said;
    }

    QStringList findings()
    {
        QStringList ids;
        for (int row = 0; row < checks.model().count(); ++row) {
            const QModelIndex index = checks.model().index(row);
            ids << checks.model().data(index, FindingList::Identifier).toString();
        }
        return ids;
    }

    PcFixture pc;
    VRListModel model;
    ConnectionStages stages;
    ConnectionFlow flow{pc.clock, pc.config, pc.system, model};
    SteamWatch steam{pc.steam};
    LinkKind kind = LinkKind::Wireless;
    QStringList said;
    UsbHeadset usb{[this]() -> AdbManger & {
        said << "checkUsb";
        return pc.adb;
    }};
    CheckRunner checks{pc.clock, ::checks::table()};
    ConnectionStatus status;
    ConnectionTracker tracker{{pc.clock, steam, flow, usb, stages, status, checks.facts()}};
    Poll poll{{steam, flow, pc.system, usb, tracker, checks}};
};

} // namespace

class TestPoll : public TestCase
{
    Q_OBJECT

private slots:
    void withNeitherSteamNorSteamVRNothingElseIsLookedAt()
    {
        Polled p(dir(), false);
        announce("[steam] hasLaunchSteamVR:false; switch: 1");
        announce("[steam] hasLaunchSteamVR:false; switch: 2");
        announce("[steam] hasLaunchSteamVR:false; switch: 3");
        p.run(); // one miss is none
        p.pc.pc.facts.waveOuts.set({});
        p.pc.server.headsets = {{"D3A", "10.0.0.7", false}};
        QVERIFY(p.flow.requestReport(LinkKind::Wireless)); // the headset is known, but nobody looks
        p.pc.server.received.clear();
        p.run();
        QCOMPARE(p.run(), QStringList());
        QCOMPARE(p.model.rowCount(), 0);
        QCOMPARE(p.pc.server.received, QStringList());
    }

    void powerIsLookedAtEvenThen()
    {
        Polled p(dir(), false);
        announce("[steam] hasLaunchSteamVR:false; switch: 1");
        announce("[steam] hasLaunchSteamVR:false; switch: 2");
        announce("[steam] hasLaunchSteamVR:false; switch: 3");
        announce("[steam] hasLaunchSteamVR:false; switch: 4");
        p.run();
        p.pc.pc.facts.acLine.set(power::AcLine::Offline);
        QCOMPARE(p.run(), QStringList({"powerTip", "steamVR"}));
        QCOMPARE(p.run(), QStringList());
        p.pc.pc.facts.acLine.set(power::AcLine::Online);
        QCOMPARE(p.run(), QStringList{"closePowerTip"});
    }

    void theWirelessLooksComeInTheirOrder()
    {
        Polled p(dir());
        p.pc.pc.processes.start("vrmonitor.exe");
        p.pc.pc.facts.acLine.set(std::nullopt);
        p.pc.pc.facts.waveOuts.set({{6, "Cinema"}});
        p.pc.pc.facts.network.set({"Public"});
        SystemInfo publicPc;
        QTRY_COMPARE(publicPc.networkCategory(), QString("Public"));
        Poll poll({p.steam, p.flow, publicPc, p.usb, p.tracker, p.checks});
        QObject::connect(&poll, &Poll::publicNetwork, [&] { p.said << "publicNetwork"; });
        QObject::connect(&poll, &Poll::powerTip, [&] { p.said << "powerTip"; });
        QObject::connect(&poll, &Poll::toast, [&] { p.said << "toast"; });
        poll.run(LinkKind::Wireless);
        QCOMPARE(p.said,
                 QStringList({"powerTip", "steam", "steamVR", "toast", "publicNetwork", "list"}));
        p.said.clear();
        poll.run(LinkKind::Wireless);
        // The network is asked about once, the sound every time.
        QCOMPARE(p.said, QStringList({"toast", "list"}));
    }

    void theAudioWarningLastsAsLongAsItsReason()
    {
        Polled p(dir());
        p.pc.pc.processes.start("vrmonitor.exe");
        p.pc.pc.facts.waveOuts.set({});
        QVERIFY(p.run().contains(audioWarning));
        QVERIFY(p.run().contains(audioWarning));
        p.pc.pc.facts.waveOuts.set({{2, "Speakers"}});
        QVERIFY(!p.run().contains(audioWarning));
    }

    void aPrivateNetworkIsNotPromptedFor()
    {
        Polled p(dir());
        p.pc.pc.processes.start("vrmonitor.exe");
        QVERIFY(!p.run().contains("publicNetwork"));
    }

    void theWiredLooksComeInTheirOrderAndLeaveTheListAlone()
    {
        Polled p(dir());
        p.pc.pc.processes.start("vrmonitor.exe");
        p.useCable();
        p.pc.server.headsets = {{"D3A", "10.0.0.7", false}};
        QVERIFY(p.flow.requestReport(LinkKind::Wireless)); // a headset on Wi-Fi is known
        p.pc.server.usbConnected = true;
        QVERIFY(p.flow.requestReport(LinkKind::Wired));
        p.pc.server.received.clear();
        QCOMPARE(p.run(), QStringList({"steam", "steamVR", "connection", "checkUsb", "list"}));
        QCOMPARE(p.pc.server.received, QStringList());
        QVERIFY(p.flow.isConnected());
        QCOMPARE(p.model.rowCount(), 0);
    }

    void theNetworkIsNeverAskedForInWiredMode()
    {
        Polled p(dir());
        p.pc.pc.processes.start("vrmonitor.exe");
        p.pc.pc.facts.network.set({"Public"});
        SystemInfo publicPc;
        QTRY_COMPARE(publicPc.networkCategory(), QString("Public"));
        bool prompted = false;
        Poll poll({p.steam, p.flow, publicPc, p.usb, p.tracker, p.checks});
        QObject::connect(&poll, &Poll::publicNetwork, [&] { prompted = true; });
        poll.run(LinkKind::Wired);
        QVERIFY(!prompted);
    }

    void onTheCableTheHeadsetIsFoundByAdb()
    {
        Polled p(dir());
        p.useCable();
        p.pc.pc.processes.start("vrmonitor.exe");
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(Stage::Headset));
        p.usb.watch();
        emit p.pc.adb.deviceConnect(true, "PA7910");
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(Stage::Linked));
        p.pc.server.usbConnected = true;
        QVERIFY(p.flow.requestReport(LinkKind::Wired));
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(stageCount));
    }

    void whatItLearnsBecomesFacts()
    {
        Polled p(dir());
        p.pc.pc.processes.start("vrmonitor.exe");
        p.pc.pc.facts.acLine.set(std::nullopt);
        p.pc.pc.facts.waveOuts.set({});
        p.run();
        Facts &facts = p.checks.facts();
        QCOMPARE(facts.power, std::optional<power::AcLine>(power::AcLine::Unknown));
        QCOMPARE(facts.steamRunning, std::optional<bool>(true));
        QCOMPARE(facts.steamVRRunning, std::optional<bool>(true));
        QCOMPARE(facts.stereoOutput, std::optional<bool>(false));
        QCOMPARE(facts.networkCategory, std::optional<QString>("Private"));
        QVERIFY(!facts.adb);
        QCOMPARE(facts.wired, std::optional<bool>(false));
        QCOMPARE(facts.reached, std::optional<int>(Stage::Headset));

        p.useCable();
        p.pc.pc.facts.acLine.set(power::AcLine::Online);
        p.pc.pc.facts.waveOuts.set({{2, "Speakers"}});
        p.run();
        QCOMPARE(facts.power, std::optional<power::AcLine>(power::AcLine::Online));
        QCOMPARE(facts.stereoOutput, std::optional<bool>(true));
        // It is not asked for on the cable.
        QVERIFY(!facts.networkCategory);
        QVERIFY(facts.adb);
        QCOMPARE(facts.adb->serial, p.pc.adb.adbState().serial);
        QCOMPARE(facts.wired, std::optional<bool>(true));
    }

    void whatItDoesNotGetToIsNotKnown()
    {
        Polled p(dir());
        p.pc.pc.facts.waveOuts.set({});
        announce("[steam] hasLaunchSteamVR:false; switch: 1");
        announce("[steam] hasLaunchSteamVR:false; switch: 2");
        p.run();
        p.pc.pc.processes.endAll("steam.exe");
        p.run();
        const Facts &facts = p.checks.facts();
        QCOMPARE(facts.steamRunning, std::optional<bool>(false));
        QVERIFY(facts.power);
        QVERIFY(!facts.stereoOutput);
        QVERIFY(!facts.networkCategory);
        QCOMPARE(facts.reached, std::optional<int>(Stage::Steam));
    }

    void whatItLearnsIsJudgedAtOnce()
    {
        Polled p(dir());
        p.pc.pc.processes.start("vrmonitor.exe");
        p.pc.pc.facts.waveOuts.set({});
        p.run();
        QCOMPARE(p.findings(), QStringList{"no-stereo-output"});
        p.pc.pc.facts.acLine.set(power::AcLine::Offline);
        p.run();
        QCOMPARE(p.findings(), QStringList({"on-battery", "no-stereo-output"}));
        p.pc.pc.facts.acLine.set(power::AcLine::Online);
        p.pc.pc.facts.waveOuts.set({{2, "Speakers"}});
        p.run();
        QCOMPARE(p.findings(), QStringList());
    }

    void theRoadFollows()
    {
        Polled p(dir());
        p.pc.server.present = false;
        p.pc.pc.processes.start("vrmonitor.exe");
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(Stage::Server));
        p.pc.server.present = true;
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(Stage::Headset));
        p.pc.server.headsets = {{"D3A", "10.0.0.7", false}};
        QVERIFY(p.flow.requestReport(LinkKind::Wireless));
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(Stage::Linked));
        QVERIFY(!p.flow.requestReport(LinkKind::Wireless)); // left out after the connect
        QVERIFY(p.flow.requestReport(LinkKind::Wireless));
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(stageCount));
    }
};

KOLM_TEST_MAIN(TestPoll)
#include "tst_poll.moc"
