#include "base/manual_clock.h"
#include "config/config_manager.h"
#include "pc/system_programs.h"
#include "steamvr/steam_manager.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>

// The question for the firewall's rule, answered by a program that plays the
// system's tool.
class FirewallWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        system_programs::lookIn({});
        TestCase::cleanup();
    }

    void theRuleCountsForItsExactProgram_data()
    {
        QTest::addColumn<QByteArray>("program");
        QTest::addColumn<bool>("has");
        QTest::newRow("there") << QByteArray("D:\\游戏\\SteamVR\\bin\\win64\\vrserver.exe") << true;
        QTest::newRow("for another SteamVR")
            << QByteArray("C:\\SteamVR\\bin\\win64\\vrserver.exe") << false;
        QTest::newRow("in another letter case")
            << QByteArray("d:\\游戏\\SteamVR\\bin\\win64\\vrserver.exe") << false;
        QTest::newRow("missing") << QByteArray() << false;
    }
    void theRuleCountsForItsExactProgram()
    {
        QFETCH(QByteArray, program);
        QFETCH(bool, has);
        QVERIFY(QFile::copy(QStringLiteral(KOLM_TALKER), path("netsh.exe")));
        system_programs::lookIn(QDir::toNativeSeparators(dir()));
        writeFile("netsh.says", program.isEmpty()
                                    ? QByteArray("\r\nNo rules match the specified criteria.\r\n")
                                    : "\r\nRule Name:     SteamVR ORB vrserver\r\n"
                                      "Program:       " +
                                          program + "\r\nOk.\r\n");
        ManualClock clock;
        ConfigManager config(dir(), [] { return false; });
        SteamManager steam(
            {clock, config, dir(), dir(), [](const std::function<void()> &) { return true; }});
        QCOMPARE(steam.hasFirewallRule("D:\\游戏\\SteamVR"), has);
        QCOMPARE(readFile("netsh.heard").split('\n').value(1),
                 QByteArray("netsh advfirewall firewall show rule name=\"SteamVR ORB vrserver\" "
                            "verbose"));
    }

    void theSystemsOwnToolIsAskedOtherwise()
    {
        // On a PC that has never seen a headset.
        ManualClock clock;
        ConfigManager config(dir(), [] { return false; });
        const SteamManager steam(
            {clock, config, dir(), dir(), [](const std::function<void()> &) { return true; }});
        clearLog();
        QVERIFY(!steam.hasFirewallRule("C:\\SteamVR"));
        QVERIFY(logged().isEmpty()); // it could be started
    }
};

KOLM_TEST_MAIN(FirewallWinTest)
#include "tst_firewall_win.moc"
