#include "checks/check_runner.h"
#include "checks/steam_watch.h"
#include "checks/table.h"
#include "controller/connection_stages.h"
#include "controller/connection_status.h"
#include "controller/connection_tracker.h"
#include "controller/poll.h"
#include "tests/controller/controller_test.h"
#include "tests/controller/parts_fixture.h"

namespace {

const QString audioWarning =
    "toast(当前无音频设备或音频设备是多声道，请切换成双声道模式或者切换双声道音频设备,2000)";

struct Polled : PartsFixture
{
    explicit Polled(const QString &folder, bool steamRuns = true)
        : PartsFixture(folder, steamThatIs(true, steamRuns))
    {
        const auto say = [this](const char *what) { return [this, what] { said << what; }; };
        QObject::connect(&watch, &SteamWatch::steamRunningChanged, say("steam"));
        QObject::connect(&watch, &SteamWatch::steamVRRunningChanged, say("steamVR"));
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

    LinkKind kind = LinkKind::Wireless;
    ConnectionStages stages;
    ConnectionStatus status;
    SteamWatch watch{steam};
    CheckRunner checks{clock, ::checks::table()};
    ConnectionTracker tracker{{clock, watch, flow, usb, stages, status, checks.facts()}};
    Poll poll{{watch, flow, system, usb, tracker, checks}};
};

} // namespace

class TestPoll : public ControllerTest
{
    Q_OBJECT

private slots:
    void withNeitherSteamNorSteamVRNothingElseIsLookedAt()
    {
        Polled p(dir(), false);
        announceMisses(3);
        p.run(); // one miss is none
        p.pc.facts.waveOuts.set({});
        p.server.headsets = {{"D3A", "10.0.0.7", false}};
        QVERIFY(p.flow.requestReport(LinkKind::Wireless)); // the headset is known, but nobody looks
        p.server.received.clear();
        p.run();
        QCOMPARE(p.run(), QStringList());
        QCOMPARE(p.model.rowCount(), 0);
        QCOMPARE(p.server.received, QStringList());
    }

    void powerIsLookedAtEvenThen()
    {
        Polled p(dir(), false);
        announceMisses(4);
        p.run();
        p.pc.facts.acLine.set(power::AcLine::Offline);
        QCOMPARE(p.run(), QStringList({"powerTip", "steamVR"}));
        QCOMPARE(p.run(), QStringList());
        p.pc.facts.acLine.set(power::AcLine::Online);
        QCOMPARE(p.run(), QStringList{"closePowerTip"});
    }

    void theWirelessLooksComeInTheirOrder()
    {
        Polled p(dir());
        p.pc.processes.start("vrmonitor.exe");
        p.pc.facts.acLine.set(std::nullopt);
        p.pc.facts.waveOuts.set({{6, "Cinema"}});
        p.pc.facts.network.set({"Public"});
        SystemInfo publicPc;
        QTRY_COMPARE(publicPc.networkCategory(), QString("Public"));
        Poll poll({p.watch, p.flow, publicPc, p.usb, p.tracker, p.checks});
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

    // On a PC with hundreds of processes each listing takes milliseconds.
    void aPollListsTheProcessesOnce()
    {
        Polled p(dir());
        p.pc.processes.start("vrmonitor.exe");
        for (int polls = 0; polls < 3; ++polls) {
            const int before = p.pc.processes.listings();
            p.run();
            QCOMPARE(p.pc.processes.listings(), before + 1);
        }
        p.useCable();
        p.run(); // adb is looked for once a run
        const int before = p.pc.processes.listings();
        p.run();
        QCOMPARE(p.pc.processes.listings(), before + 1);
    }

    void theAudioWarningLastsAsLongAsItsReason()
    {
        Polled p(dir());
        p.pc.processes.start("vrmonitor.exe");
        p.pc.facts.waveOuts.set({});
        QVERIFY(p.run().contains(audioWarning));
        QVERIFY(p.run().contains(audioWarning));
        p.pc.facts.waveOuts.set({{2, "Speakers"}});
        QVERIFY(!p.run().contains(audioWarning));
    }

    void aPrivateNetworkIsNotPromptedFor()
    {
        Polled p(dir());
        p.pc.processes.start("vrmonitor.exe");
        QVERIFY(!p.run().contains("publicNetwork"));
    }

    void theWiredLooksComeInTheirOrderAndLeaveTheListAlone()
    {
        Polled p(dir());
        p.pc.processes.start("vrmonitor.exe");
        p.useCable();
        p.server.headsets = {{"D3A", "10.0.0.7", false}};
        QVERIFY(p.flow.requestReport(LinkKind::Wireless)); // a headset on Wi-Fi is known
        p.server.usbConnected = true;
        QVERIFY(p.flow.requestReport(LinkKind::Wired));
        p.server.received.clear();
        QCOMPARE(p.run(), QStringList({"steam", "steamVR", "connection", "adb", "list"}));
        QCOMPARE(p.server.received, QStringList());
        QVERIFY(p.flow.isConnected());
        QCOMPARE(p.model.rowCount(), 0);
    }

    void theNetworkIsNeverAskedForInWiredMode()
    {
        Polled p(dir());
        p.pc.processes.start("vrmonitor.exe");
        p.pc.facts.network.set({"Public"});
        SystemInfo publicPc;
        QTRY_COMPARE(publicPc.networkCategory(), QString("Public"));
        bool prompted = false;
        Poll poll({p.watch, p.flow, publicPc, p.usb, p.tracker, p.checks});
        QObject::connect(&poll, &Poll::publicNetwork, [&] { prompted = true; });
        poll.run(LinkKind::Wired);
        QVERIFY(!prompted);
    }

    void onTheCableTheHeadsetIsFoundByAdb()
    {
        Polled p(dir());
        p.useCable();
        p.pc.processes.start("vrmonitor.exe");
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(Stage::Headset));
        p.usb.watch();
        emit p.adb.deviceConnect(true, "PA7910");
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(Stage::Linked));
        p.server.usbConnected = true;
        QVERIFY(p.flow.requestReport(LinkKind::Wired));
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(stageCount));
    }

    void whatItLearnsBecomesFacts()
    {
        Polled p(dir());
        p.pc.processes.start("vrmonitor.exe");
        p.pc.facts.acLine.set(std::nullopt);
        p.pc.facts.waveOuts.set({});
        p.run();
        Facts &facts = p.checks.facts();
        QCOMPARE(facts.power, std::optional<power::AcLine>(power::AcLine::Unknown));
        QCOMPARE(facts.steamRunning, std::optional<bool>(true));
        QCOMPARE(facts.steamVRRunning, std::optional<bool>(true));
        QCOMPARE(facts.stereoOutput, std::optional<bool>(false));
        QCOMPARE(facts.networkCategory, std::optional<QString>("Private"));
        QVERIFY(!facts.adb);
        QCOMPARE(facts.wired, std::optional<bool>(false));
        QCOMPARE(facts.reached, std::optional<int>(int(Stage::Headset)));

        p.useCable();
        p.pc.facts.acLine.set(power::AcLine::Online);
        p.pc.facts.waveOuts.set({{2, "Speakers"}});
        p.run();
        QCOMPARE(facts.power, std::optional<power::AcLine>(power::AcLine::Online));
        QCOMPARE(facts.stereoOutput, std::optional<bool>(true));
        // It is not asked for on the cable.
        QVERIFY(!facts.networkCategory);
        QVERIFY(facts.adb);
        QCOMPARE(facts.adb->serial, p.adb.adbState().serial);
        QCOMPARE(facts.wired, std::optional<bool>(true));
        // And adb not without.
        p.kind = LinkKind::Wireless;
        p.run();
        QVERIFY(!facts.adb);
    }

    void whatItDoesNotGetToIsNotKnown()
    {
        Polled p(dir());
        p.pc.facts.waveOuts.set({});
        announceMisses(2);
        p.run();
        p.pc.processes.endAll("steam.exe");
        p.run();
        const Facts &facts = p.checks.facts();
        QCOMPARE(facts.steamRunning, std::optional<bool>(false));
        QVERIFY(facts.power);
        QVERIFY(!facts.stereoOutput);
        QVERIFY(!facts.networkCategory);
        QCOMPARE(facts.reached, std::optional<int>(int(Stage::Steam)));
    }

    void whatItLearnsIsJudgedAtOnce()
    {
        Polled p(dir());
        p.pc.processes.start("vrmonitor.exe");
        p.pc.facts.waveOuts.set({});
        p.run();
        QCOMPARE(p.findings(), QStringList{"no-stereo-output"});
        p.pc.facts.acLine.set(power::AcLine::Offline);
        p.run();
        QCOMPARE(p.findings(), QStringList({"on-battery", "no-stereo-output"}));
        p.pc.facts.acLine.set(power::AcLine::Online);
        p.pc.facts.waveOuts.set({{2, "Speakers"}});
        p.run();
        QCOMPARE(p.findings(), QStringList());
    }

    void aLaunchThatFailedIsAFinding()
    {
        Polled p(dir(), false);
        announceMisses(1);
        p.pc.launches.on("steam.exe", [](const SimLaunch &) {
            return SimLaunchResult{false, 193, false, 0};
        });
        const QString steam = "C:\\Program Files (x86)\\Steam\\steam.exe";
        announce("[steam] " + steam + " could not be started: " + steam +
                 " is not a valid Win32 application. (error 193)");
        announce("[steam] executeExA failed, error:193, elapsed:0ms");
        p.steam.launchSteamExe();
        p.run();
        QCOMPARE(p.findings(), QStringList{"steam-not-startable"});
    }

    void theStagesFollow()
    {
        Polled p(dir());
        p.server.present = false;
        p.pc.processes.start("vrmonitor.exe");
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(Stage::Server));
        p.server.present = true;
        p.run();
        QCOMPARE(p.stages.firstMissing(), int(Stage::Headset));
        p.server.headsets = {{"D3A", "10.0.0.7", false}};
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
