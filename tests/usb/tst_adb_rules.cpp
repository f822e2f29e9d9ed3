#include "tests/support/test_case.h"
#include "usb/adb_rules.h"

using adb_rules::AdbState;
using adb_rules::Answer;
using adb_rules::Check;

namespace {

AdbState stateIn(int state, const QString &serial = QStringLiteral("wired"))
{
    AdbState now;
    now.state = state;
    now.serial = serial;
    return now;
}

// Line ends as adb writes them on Windows.
QByteArray windows(QByteArray text)
{
    return text.replace('\n', "\r\n");
}

} // namespace

class AdbRulesTest : public TestCase
{
    Q_OBJECT

private slots:
    void forwardsOfOthersAreKnown_data()
    {
        QTest::addColumn<QString>("output");
        QTest::addColumn<QStringList>("forwards");
        const QString header = "List of devices attached\r\n";
        QTest::newRow("none") << header + "PA7910\tdevice\r\n\r\n" << QStringList();
        QTest::newRow("ours") << "PA1 tcp:9943 tcp:9943\r\nPA1 tcp:9944 tcp:9944\r\n"
                              << QStringList();
        QTest::newRow("others'") << header + "PA1\tdevice\r\n\r\nPA1 tcp:80 tcp:8080\r\n"
                                             "PA1 tcp:9943 tcp:9943\r\nPA2 tcp:1 local:x\r\n"
                                 << QStringList{"PA1 tcp:80 tcp:8080", "PA2 tcp:1 local:x"};
        QTest::newRow("our port, led elsewhere") << "PA1 tcp:9943 tcp:1\r\n"
                                                 << QStringList("PA1 tcp:9943 tcp:1");
        QTest::newRow("chatter") << "* daemon not running; starting now at tcp:5037\r\n"
                                 << QStringList();
    }
    void forwardsOfOthersAreKnown()
    {
        QFETCH(QString, output);
        QFETCH(QStringList, forwards);
        QCOMPARE(adb_rules::foreignForwards(output), forwards);
    }

    void anIdleCheckAsksForDevices()
    {
        const Check check = adb_rules::check(stateIn(adb_rules::Idle));
        QCOMPARE(check.action, Check::AskForDevices);
        QCOMPARE(check.next.state, int(adb_rules::AwaitingDevices));
        QCOMPARE(check.next.retries, 0u);
        QVERIFY(!check.useShipped);
    }

    void aCheckEndsForwarding()
    {
        const Check check = adb_rules::check(stateIn(adb_rules::Forwarding));
        QCOMPARE(check.action, Check::Nothing);
        QCOMPARE(check.next.state, int(adb_rules::Idle));
    }

    void theThirdCheckWithoutAnswerGivesUpWaiting()
    {
        AdbState now = stateIn(adb_rules::AwaitingDevices);
        for (unsigned int retries : {1u, 2u}) {
            const Check check = adb_rules::check(now);
            QCOMPARE(check.action, Check::Nothing);
            QCOMPARE(check.next.retries, retries);
            QCOMPARE(check.next.state, int(adb_rules::AwaitingDevices));
            QVERIFY(!check.giveUp);
            now = check.next;
        }
        const Check third = adb_rules::check(now);
        QVERIFY(third.giveUp);
        QCOMPARE(third.action, Check::Nothing);
        QCOMPARE(third.next.state, int(adb_rules::Idle));
        QCOMPARE(third.next.retries, 0u);
    }

    void unansweredChecksAreCountedAcrossAnswers()
    {
        AdbState now = stateIn(adb_rules::AwaitingDevices);
        now.retries = 2;
        now = adb_rules::answer(now, "List of devices attached\r\n\r\n").next;
        QCOMPARE(now.retries, 2u);
        now.state = adb_rules::Idle;
        now = adb_rules::check(now).next;
        QCOMPARE(now.state, int(adb_rules::AwaitingDevices));
        now = adb_rules::check(now).next;
        QCOMPARE(now.state, int(adb_rules::Idle));
        QCOMPARE(now.retries, 0u);
    }

    void theVersionQueryGetsOneGraceAndThenTheShippedAdbIsUsed()
    {
        AdbState now = stateIn(adb_rules::AwaitingVersion);
        now.mode = adb_rules::OnSearchPath;
        Check check = adb_rules::check(now);
        QCOMPARE(check.action, Check::GiveGrace);
        QCOMPARE(check.next.grace, int(adb_rules::Running));
        QCOMPARE(check.next.state, int(adb_rules::AwaitingVersion));

        check = adb_rules::check(check.next);
        QCOMPARE(check.action, Check::Nothing);
        QVERIFY(!check.useShipped);
        QCOMPARE(check.next.state, int(adb_rules::AwaitingVersion));

        check.next.grace = adb_rules::Over;
        check = adb_rules::check(check.next);
        QVERIFY(check.useShipped);
        QCOMPARE(check.action, Check::AskForDevices);
        QCOMPARE(check.next.mode, int(adb_rules::Shipped));
        QCOMPARE(check.next.state, int(adb_rules::AwaitingDevices));
    }

    void theVersionAnswerMeansTheLocalAdb()
    {
        // Anything at all is an answer.
        for (const char *text : {"Android Debug Bridge version 1.0.41\r\n", "offline", "\r\n"}) {
            AdbState now = stateIn(adb_rules::AwaitingVersion);
            const Answer answer = adb_rules::answer(now, text);
            QCOMPARE(answer.action, Answer::UseLocal);
            QCOMPARE(answer.next.mode, int(adb_rules::OnSearchPath));
            QCOMPARE(answer.next.state, int(adb_rules::Idle));
            QCOMPARE(answer.next.serial, QString("wired"));
        }
    }

    void recordedOutputsMean_data()
    {
        QTest::addColumn<QByteArray>("output");
        QTest::addColumn<QString>("before");
        QTest::addColumn<int>("action");
        QTest::addColumn<QString>("after");

        const QByteArray header = "List of devices attached\n";
        const QByteArray oldChatter = "* daemon not running. starting it now on port 5037 *\n"
                                      "* daemon started successfully *\n";
        const QByteArray newChatter = "* daemon not running; starting now at tcp:5037\n"
                                      "* daemon started successfully\n";
        const QString noHeadset;
        const auto row = [](const char *name, const QByteArray &output, const QString &before,
                            int action, const QString &after) {
            QTest::newRow(name) << windows(output) << before << action << after;
        };

        row("no device, at the start", header + "\n", "wired", Answer::ReportGone, noHeadset);
        row("no device, after a headset", header + "\n", "PA7910", Answer::ReportGone, noHeadset);
        row("no device, as before", header + "\n", noHeadset, Answer::Nothing, noHeadset);
        row("one device", header + "PA7910\tdevice\n\n", noHeadset, Answer::ReportHeadset,
            "PA7910");
        row("one device, as before", header + "PA7910\tdevice\n\n", "PA7910", Answer::Nothing,
            "PA7910");
        row("another device", header + "PA7911\tdevice\n\n", "PA7910", Answer::ReportHeadset,
            "PA7911");
        row("a device on the network", header + "192.168.1.31:5555\tdevice\n\n", noHeadset,
            Answer::ReportHeadset, "192.168.1.31:5555");
        row("two devices", header + "PA7910\tdevice\nPA7911\tdevice\n\n", noHeadset,
            Answer::ReportHeadset, "PA7910\tdevice\r\nPA7911");
        row("device and forwards in one piece",
            header + "PA7910\tdevice\n\nPA7910 tcp:9943 tcp:9943\n\n", noHeadset,
            Answer::ReportHeadset, "PA7910PA7910 tcp:9943 tcp:9943\r\n\r\n");
        row("device and no forwards in one piece", header + "PA7910\tdevice\n\n\n", noHeadset,
            Answer::ReportHeadset, "PA7910\r\n");
        row("no device and no forwards in one piece", header + "\n\n", noHeadset,
            Answer::ReportHeadset, "\r\n\r\n");
        row("unauthorized", header + "PA7910\tunauthorized\n\n", noHeadset, Answer::ReportHeadset,
            "PA7910\tunauthorized\r\n\r\n");
        row("no permissions", header + "PA7910\tno permissions; see [http://x/]\n\n", noHeadset,
            Answer::ReportHeadset, "PA7910\tno permissions; see [http://x/]\r\n\r\n");
        row("recovery", header + "PA7910\trecovery\n\n", noHeadset, Answer::ReportHeadset,
            "PA7910\trecovery\r\n\r\n");
        row("offline", header + "PA7910\toffline\n\n", "PA7910", Answer::RestartAdb, "PA7910");
        row("one of two offline", header + "PA7910\tdevice\nPA7911\toffline\n\n", "PA7910",
            Answer::RestartAdb, "PA7910");
        row("connecting", header + "PA7910\tconnecting\n\n", noHeadset, Answer::RestartAdb,
            noHeadset);
        row("Offline in upper case is a word like others", header + "PA7910\tOffline\n\n", "PA7910",
            Answer::ReportHeadset, "PA7910\tOffline\r\n\r\n");
        row("the old daemon's start, by itself", oldChatter, "PA7910", Answer::Nothing, "PA7910");
        row("the new daemon's start, by itself", newChatter, "PA7910", Answer::Nothing, "PA7910");
        row("the old daemon's start before the list", oldChatter + header + "PA7910\tdevice\n\n",
            noHeadset, Answer::ReportHeadset,
            "* daemon not running. starting it now on port 5037 *\r\n"
            "* daemon started successfully *\r\nPA7910");
        row("the old daemon's start before an empty list", oldChatter + header + "\n", noHeadset,
            Answer::ReportHeadset, windows(oldChatter) + "\r\n");
        row("no forwards", "\n", "PA7910", Answer::SetUpPorts, "PA7910");
        row("forwards", "PA7910 tcp:9943 tcp:9943\nPA7910 tcp:9944 tcp:9944\n\n", "PA7910",
            Answer::Nothing, "PA7910");
        row("two empty lines", "\n\n", "PA7910", Answer::Nothing, "PA7910");
        row("half a header", "List of devices", "PA7910", Answer::Nothing, "PA7910");
        row("the header alone", header, "PA7910", Answer::ReportHeadset, noHeadset);
        row("nothing", "", "PA7910", Answer::Nothing, "PA7910");
        QTest::newRow("a list with other line ends")
            << QByteArray("List of devices attached\nPA7911\tdevice\n\n") << "PA7910"
            << int(Answer::Nothing) << "PA7910";
    }

    void recordedOutputsMean()
    {
        QFETCH(QByteArray, output);
        QFETCH(QString, before);
        QFETCH(int, action);
        QFETCH(QString, after);
        const Answer answer = adb_rules::answer(stateIn(adb_rules::AwaitingDevices, before),
                                                QString::fromLatin1(output));
        QCOMPARE(int(answer.action), action);
        QCOMPARE(answer.next.serial, after);
        QCOMPARE(answer.next.state, int(action == Answer::SetUpPorts ? adb_rules::Forwarding
                                                                     : adb_rules::AwaitingDevices));
    }

    void onlyAnAnswerToTheListCounts_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("text");
        for (const int state : {int(adb_rules::Idle), int(adb_rules::Forwarding)}) {
            for (const char *text : {"\r\n", "List of devices attached\r\nA\tdevice\r\n\r\n",
                                     "List of devices attached\r\n\r\n", "A\toffline\r\n"})
                QTest::addRow("%d %s", state, text) << state << text;
        }
    }

    void onlyAnAnswerToTheListCounts()
    {
        QFETCH(int, state);
        QFETCH(QString, text);
        const Answer answer = adb_rules::answer(stateIn(state), text);
        QCOMPARE(answer.action, Answer::Nothing);
        QCOMPARE(answer.next.state, state);
        QCOMPARE(answer.next.serial, QString("wired"));
    }

    void aSecondHeadsetReplacesTheFirstWithoutANewsOfItsEnd()
    {
        const Answer first = adb_rules::answer(stateIn(adb_rules::AwaitingDevices),
                                               "List of devices attached\r\nA\tdevice\r\n\r\n");
        const Answer second =
            adb_rules::answer(first.next, "List of devices attached\r\nB\tdevice\r\n\r\n");
        QCOMPARE(second.action, Answer::ReportHeadset);
        QCOMPARE(second.next.serial, QString("B"));
    }

    void commandLinesNameTheAdbInUse_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");
        const QString plain = "adb devices && adb forward --list";
        QTest::newRow("on the search path") << int(adb_rules::OnSearchPath) << "" << plain;
        QTest::newRow("shipped")
            << int(adb_rules::Shipped) << "C:/KOLM/ADB/adb.exe"
            << "C:/KOLM/ADB/adb.exe devices && C:/KOLM/ADB/adb.exe forward --list";
        QTest::newRow("running") << int(adb_rules::AlreadyRunning) << "D:\\adb\\adb.exe"
                                 << "D:\\adb\\adb.exe devices && D:\\adb\\adb.exe forward --list";
        QTest::newRow("shipped, with a blank")
            << int(adb_rules::Shipped) << "C:/Program Files/KOLM/ADB/adb.exe" << plain;
        QTest::newRow("running, with a blank")
            << int(adb_rules::AlreadyRunning) << "D:\\my adb\\adb.exe" << plain;
        for (const QString folder : {"a(b", "a)b", "100%", "a,b", "a;b", "a=b"}) {
            QTest::addRow("running, in the folder %s", qPrintable(folder))
                << int(adb_rules::AlreadyRunning) << "D:\\" + folder + "\\adb.exe" << plain;
        }
        QTest::newRow("running, path not told") << int(adb_rules::AlreadyRunning) << "" << plain;
    }

    void commandLinesNameTheAdbInUse()
    {
        QFETCH(int, mode);
        QFETCH(QString, path);
        QFETCH(QString, expected);
        QCOMPARE(adb_rules::commandLine("adb devices && adb forward --list", mode, path), expected);
    }

    void aPathWithABlankIsTheWorkingFolder()
    {
        for (const QString folder : {"a(b", "a)b", "100%", "a,b", "a;b", "a=b"})
            QCOMPARE(adb_rules::workingFolder("D:\\" + folder + "\\adb.exe"),
                     "D:\\" + folder + '\\');
        for (const QString folder : {"a&b", "a^b", "a!b", "a+b", "[a]", "~a", "工具"})
            QCOMPARE(adb_rules::workingFolder("D:\\" + folder + "\\adb.exe"), QString());
        QCOMPARE(adb_rules::workingFolder("D:\\my adb\\adb.exe"), QString("D:\\my adb\\"));
        QCOMPARE(adb_rules::workingFolder("D:\\adb\\adb.exe"), QString());
        // Case counts: the name of a running adb is compared with case, too.
        QCOMPARE(adb_rules::commandLine("ADB adb", adb_rules::Shipped, "x"), QString("ADB x"));
    }
};

KOLM_TEST_MAIN(AdbRulesTest)
#include "tst_adb_rules.moc"
