#include "checks/check_model.h"
#include "controller/help_links.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QDir>

using checks::Action;

// The checks behind the controller: what its steps learn, what is asked beside
// them, and what the user wants to be done.
class TestOrbFindings : public TestCase
{
    Q_OBJECT

    static QStringList found(ControllerFixture &f)
    {
        CheckModel &model = f.orb().findings();
        QStringList ids;
        for (int row = 0; row < model.count(); ++row)
            ids << model.data(model.index(row), FindingList::Identifier).toString();
        return ids;
    }

private slots:
    void init()
    {
        TestCase::init();
        writeFile("set.json", R"({"wiredOrWireless":2})");
    }

    // The page's look at the hardware logs, reports and may open a dialog; this
    // one does not.
    void thePcIsJudgedBesideThePageWithoutATrace_data()
    {
        QTest::addColumn<QByteArray>("rules");
        QTest::addColumn<QString>("system");
        QTest::addColumn<quint64>("driver");
        QTest::addColumn<QString>("finding");
        const QByteArray good = R"({"graphics":{"high":["RTX 3060"]}})";
        const quint64 oldDriver = 0x001F'0000'000F'0E9D;
        const quint64 newDriver = 0x001F'0000'000F'1438;
        QTest::newRow("good") << good << "10" << newDriver << "";
        QTest::newRow("old system") << good << "8.1" << newDriver << "system-too-old";
        QTest::newRow("no rules") << QByteArray() << "10" << newDriver << "hardware-too-weak";
        QTest::newRow("broken rules")
            << QByteArray("{") << "10" << newDriver << "hardware-too-weak";
        QTest::newRow("old driver") << good << "10" << oldDriver << "driver-too-old";
    }
    void thePcIsJudgedBesideThePageWithoutATrace()
    {
        QFETCH(QByteArray, rules);
        QFETCH(QString, system);
        QFETCH(quint64, driver);
        QFETCH(QString, finding);
        writeFile("compare.json", rules);
        ControllerFixture f(dir(), steamRunning(), [&](SimPc &pc) {
            pc.facts.adapters.set({{0x10DE, 1, "NVIDIA GeForce RTX 3060", 0}});
            pc.facts.displayDevices.set({{{true, {{"NVIDIA", driver}}}}});
            pc.facts.osVersion.set(system);
        });
        // Answered beside all this, too.
        QTRY_VERIFY(!logged().filter("powershellcmd res:").isEmpty());
        f.orb();
        const QStringList before = logged();
        const QStringList signalsBefore = f.emitted;
        const QStringList expected = finding.isEmpty() ? QStringList() : QStringList{finding};
        QTRY_VERIFY(!f.orb().findings().isAsking());
        QCOMPARE(found(f), expected);
        QCOMPARE(logged(), before);
        QCOMPARE(f.emitted, signalsBefore);
        QCOMPARE(f.events.size(), 1); // the start
    }

    // Known from the start, and looked at again while nothing comes of it.
    void whoHasOurOwnPortIsAFindingUntilItIsGone()
    {
        ControllerFixture f(dir(), steamRunning());
        const quint32 holder = f.pc.processes.start("node.exe");
        f.pc.ports.open(holder, 9932);
        f.server.present = false;
        f.server.port.holder = ControlPort::Holder{holder, "node.exe"};
        f.orb();
        QTRY_VERIFY(found(f).contains("control-port-taken"));
        f.pc.ports.close(holder);
        f.clock.advance(30000);
        QTRY_VERIFY(!found(f).contains("control-port-taken"));
    }

    void whoHoldsThePortsIsAFinding()
    {
        ControllerFixture f(dir(), steamRunning());
        f.pc.ports.open(f.pc.processes.start("node.exe"), 9943);
        f.orb().checkPortUsage();
        QVERIFY(found(f).contains("ports-taken"));
        QCOMPARE(f.emitted.last(), QString("showUseProtPage(node.exe)"));
        f.pc.processes.endAll("node.exe");
        f.orb().checkPortUsage();
        QVERIFY(!found(f).contains("ports-taken"));
    }

    void aSteamThatIsNotThereIsAFinding()
    {
        SteamOptions options;
        options.steamInstalled = false;
        ControllerFixture f(dir(), options);
        announce("[steam] Could not find Steam installation path");
        announce("[steam] Cannot find Steam installation path");
        announce("[steam] startupSteam failed");
        announce("[steam] hasLaunchSteamVR:false; switch: 1");
        f.orb();
        f.pass(5000);
        QVERIFY(found(f).contains("steam-missing"));
    }

    void thePollsFindingsComeWithThePoll()
    {
        ControllerFixture f(dir(), steamRunning());
        f.pc.processes.start("vrmonitor.exe");
        f.orb();
        f.pc.facts.acLine.set(power::AcLine::Offline);
        QVERIFY(!found(f).contains("on-battery"));
        f.pass(5000);
        QVERIFY(found(f).contains("on-battery"));
        f.pc.facts.acLine.set(power::AcLine::Online);
        f.pass(5000);
        QVERIFY(!found(f).contains("on-battery"));
    }

    void whatTheUserWantsIsDone_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("opened");
        QTest::addColumn<QString>("toast");
        QTest::newRow("a settings page") << int(Action::OpenUrl) << "ms-settings:network"
                                         << "";
        QTest::newRow("Steam's page") << int(Action::InstallSteam) << "https://"
                                      << "";
        QTest::newRow("the guide") << int(Action::OpenGuide) << "the guide"
                                   << "";
        QTest::newRow("Steam") << int(Action::LaunchSteam) << ""
                               << "正在登录steam，请稍等";
        QTest::newRow("SteamVR") << int(Action::LaunchSteamVR) << ""
                                 << "正在准备打开或者安装SteamVR,确保已登录steam";
        QTest::newRow("nothing") << int(Action::None) << ""
                                 << "";
    }
    void whatTheUserWantsIsDone()
    {
        QFETCH(int, kind);
        QFETCH(QString, opened);
        QFETCH(QString, toast);
        QDir(dir()).mkpath("guide");
        writeFile("guide/en.html", "<html/>");
        if (opened == "the guide")
            opened = help_links::userGuide(QLocale::system().language(), dir()).toString();
        ControllerFixture f(dir(), steamRunning());
        f.applicationDir = dir();
        f.orb();
        f.emitted.clear();
        checks::Check check;
        check.action = {static_cast<Action::Kind>(kind), "do it", "ms-settings:network"};
        f.orb().findings().showAll({{&check, {}}});
        f.orb().findings().foremost()->act(0);
        f.orb().findings().showAll({}); // the check is the test's
        QCOMPARE(f.opened.size(), opened.isEmpty() ? 0 : 1);
        if (!opened.isEmpty())
            QVERIFY2(f.opened[0].toString().startsWith(opened), qPrintable(f.opened[0].toString()));
        QCOMPARE(f.toasts().size(), toast.isEmpty() ? 0 : 1);
        if (!toast.isEmpty())
            QVERIFY(f.toasts()[0].contains(toast));
    }
};

KOLM_TEST_MAIN(TestOrbFindings)
#include "tst_orb_findings.moc"
