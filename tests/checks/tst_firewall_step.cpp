#include "checks/firewall_step.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

namespace {

const QString steamVR =
    QStringLiteral("C:\\Program Files (x86)\\Steam\\steamapps\\common\\SteamVR");

// What the system prints of the rule, as a shell script.
QByteArray printsRuleFor(const QByteArray &program)
{
    return "printf '%s\\r\\n' '' 'Rule Name:                            SteamVR ORB vrserver' "
           "'Enabled:                              Yes' "
           "'Direction:                            In' "
           "'Program:                              " +
           program + "' 'Ok.'";
}

const QByteArray question =
    "command netsh advfirewall firewall show rule name=\"SteamVR ORB vrserver\" verbose";

// A link that notes which request was made.
class NotingLink final : public HeadsetLink
{
public:
    void linkTo(const QString &, const QString &) override {}
    void disconnect(const QString &, const QString &) override {}
    void requestHmdInfo() override {}
    void sendWiredConnect(bool) override {}
    void setRegisterFirewallPending() override { ++firewallRequests; }
    bool isDeviceConnected() const override { return false; }
    QString deviceId() const override { return {}; }
    HeadsetList hmdInfoList() const override { return {}; }
    bool hasClient() const override { return false; }
    ControlPort controlPort() const override { return {}; }
    std::optional<ControlPort::Holder> peer() const override { return {}; }
    bool hasReported(bool) const override { return false; }

    int firewallRequests = 0;
};

} // namespace

class TestFirewallStep : public TestCase
{
    Q_OBJECT

private slots:
    void theRuleCountsForItsExactProgram_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<bool>("has");
        const QByteArray server = "C:\\Program Files (x86)\\Steam\\steamapps\\common\\SteamVR\\bin"
                                  "\\win64\\vrserver.exe";
        QTest::newRow("there") << printsRuleFor(server) << true;
        QTest::newRow("for another SteamVR")
            << printsRuleFor("D:\\SteamVR\\bin\\win64\\vrserver.exe") << false;
        QTest::newRow("in another letter case") << printsRuleFor(server.toLower()) << false;
        QTest::newRow("for another program of it")
            << printsRuleFor("C:\\Program Files (x86)\\Steam\\steamapps\\common\\SteamVR\\bin"
                             "\\win64\\vrmonitor.exe")
            << false;
        QTest::newRow("missing") << QByteArray(
                                        "echo 'No rules match the specified criteria.'; exit 1")
                                 << false;
        QTest::newRow("silent") << QByteArray("true") << false;
    }
    void theRuleCountsForItsExactProgram()
    {
        QFETCH(QByteArray, script);
        QFETCH(bool, has);
        PcFixture f(dir());
        f.pc.facts.commands.set({{"netsh", script}});
        NotingLink link;
        firewall_step::run(steamVR, f.steam, [&]() -> HeadsetLink & { return link; });
        QCOMPARE(f.pc.journal.lines(), QStringList{QString::fromLatin1(question)});
        QCOMPARE(logged().last(),
                 QString(has ? "has register ORB firewall" : "need register ORB firewall"));
        QCOMPARE(link.firewallRequests, has ? 0 : 1);
    }

    void aSystemThatCannotBeAskedCountsAsWithoutTheRule()
    {
        PcFixture f(dir());
        QVERIFY(!f.steam.hasFirewallRule(steamVR));
        QCOMPARE(loggedCount(" CreateProcess failed!"), 1);
    }

    void aRuleInAFolderWithChineseIsFound()
    {
        PcFixture f(dir());
        f.pc.facts.commands.set(
            {{"netsh", printsRuleFor("D:\\游戏\\SteamVR\\bin\\win64\\vrserver.exe")}});
        QVERIFY(f.steam.hasFirewallRule("D:\\游戏\\SteamVR"));
    }

    void theLinkIsNotMadeForARuleThatIsThere()
    {
        PcFixture f(dir());
        f.pc.facts.commands.set({{"netsh", printsRuleFor("C:\\VR\\bin\\win64\\vrserver.exe")}});
        bool made = false;
        NotingLink link;
        firewall_step::run("C:\\VR", f.steam, [&]() -> HeadsetLink & {
            made = true;
            return link;
        });
        QVERIFY(!made);
    }

    void theMissingRuleIsRequestedWithTheNextReportAndOnce()
    {
        ControllerFixture f(dir());
        f.pc.facts.commands.set({{"netsh", "true"}});
        firewall_step::run(steamVR, f.steam, [&]() -> HeadsetLink & { return f.server; });
        QVERIFY(f.server.received.isEmpty());
        f.server.requestHmdInfo();
        f.server.requestHmdInfo();
        QCOMPARE(f.server.received.count("RegisterFireWall"), 1);
    }

    void withoutAFolderNothingIsLookedFor()
    {
        PcFixture f(dir());
        clearLog();
        firewall_step::run(QString(), f.steam, []() -> HeadsetLink & { qFatal("no link"); });
        QVERIFY(f.pc.journal.lines().isEmpty());
        QVERIFY(logged().isEmpty());
    }

    void theControllerDoesNotLookForIt()
    {
        ControllerFixture f(dir());
        f.orb();
        QVERIFY(f.pc.journal.lines().filter("netsh").isEmpty());
        QVERIFY(!f.linkMade);
    }
};

KOLM_TEST_MAIN(TestFirewallStep)
#include "tst_firewall_step.moc"
