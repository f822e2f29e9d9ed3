#include "base/manual_clock.h"
#include "pc/own_variables.h"
#include "simpc/sim_pc.h"
#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"

#include <QFile>

#include <chrono>
#include <future>
#include <sys/stat.h>

// What the commands do is played by shell scripts; the processes and the pipes
// are real ones.
class TestRunCommand : public TestCase
{
    Q_OBJECT

private slots:
    void everythingThatWasWrittenComesBack_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<QString>("output");
        QTest::newRow("nothing") << QByteArray("true") << "";
        QTest::newRow("a line") << QByteArray("echo hello") << "hello\n";
        QTest::newRow("without an end of line") << QByteArray("printf hello") << "hello";
        QTest::newRow("both outputs")
            << QByteArray("echo out; echo err >&2; echo out") << "out\nerr\nout\n";
        QTest::newRow("a failing command") << QByteArray("echo no; exit 3") << "no\n";
        QTest::newRow("Chinese") << QByteArray("echo 规则名称") << "规则名称\n";
        QTest::newRow("carriage returns stay")
            << QByteArray("printf 'a\\r\\nb\\r\\n'") << "a\r\nb\r\n";
        QTest::newRow("what a child writes")
            << QByteArray("sh -c 'echo child'; echo parent") << "child\nparent\n";
        QTest::newRow("what a child writes that is left behind")
            << QByteArray("(cat /dev/null; echo child) & exit 0") << "child\n";
    }
    void everythingThatWasWrittenComesBack()
    {
        QFETCH(QByteArray, script);
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.commands.set({{"tool", script}});
        QTEST(SystemInfo::runCommand("tool"), "output");
    }

    void whatIsOursAloneIsNotHandedOn()
    {
        ManualClock clock;
        SimPc pc(clock);
        qputenv("KOLM_TEST_SHARED", "yes");
        own_variables::set("KOLM_TEST_OWN", "512");
        pc.facts.commands.set({{"tool", "echo [$KOLM_TEST_SHARED] [$KOLM_TEST_OWN]"}});
        QCOMPARE(SystemInfo::runCommand("tool"), QString("[yes] []\n"));
    }

    void theCommandLineIsRunAsItWasGiven()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.commands.set({{"netsh", "true"}});
        SystemInfo::runCommand("netsh show rule name=\"a b\"");
        QCOMPARE(pc.journal.lines(), QStringList{"command netsh show rule name=\"a b\""});
    }

    void megabytesComeBackWhole()
    {
        ManualClock clock;
        SimPc pc(clock);
        // Characters of three bytes fall across the pieces that are read.
        pc.facts.commands.set({{"tool", "yes 规则名称 | head -c 13631488"}});
        const QString output = SystemInfo::runCommand("tool");
        const QString line = "规则名称\n";
        QCOMPARE(output.size(), 13631488 / 13 * 5);
        QVERIFY(output == line.repeated(13631488 / 13));
    }

    void bytesThatAreNoUtf8ComeBackAsReplacements()
    {
        ManualClock clock;
        SimPc pc(clock);
        pc.facts.commands.set({{"tool", "printf 'a\\377b'"}});
        QCOMPARE(SystemInfo::runCommand("tool"), QString("a\uFFFDb"));
    }

    void aCommandThatDoesNotExistIsLogged()
    {
        ManualClock clock;
        SimPc pc(clock);
        QCOMPARE(SystemInfo::runCommand("no-such-tool --help"), QString());
        QCOMPARE(logged(), QStringList{" CreateProcess failed!"});
    }

    void aCommandThatClosesItsOutputsIsNotWaitedFor()
    {
        ManualClock clock;
        SimPc pc(clock);
        QVERIFY(!::mkfifo("gate", 0600));
        pc.facts.commands.set(
            {{"tool", "echo early; exec >&- 2>&-; read line <gate; echo \"$line\" >late"}});
        QCOMPARE(SystemInfo::runCommand("tool"), QString("early\n"));
        // It still runs: it hears of this.
        writeFile("gate", "on\n");
        QTRY_COMPARE(readFile("late"), QByteArray("on\n"));
    }

    void theEndOfTheOutputIsWaitedForAndNotTheEndOfTheCommand()
    {
        ManualClock clock;
        SimPc pc(clock);
        QVERIFY(!::mkfifo("gate", 0600));
        QVERIFY(!::mkfifo("gone", 0600));
        // The command ends at once; a child of it keeps the pipe.
        pc.facts.commands.set(
            {{"tool", "(read line <gate; echo \"$line\") & echo first; echo >gone"}});
        std::future<QString> output =
            std::async(std::launch::async, [] { return SystemInfo::runCommand("tool"); });
        QCOMPARE(readFile("gone"), QByteArray("\n"));
        QCOMPARE(output.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
        writeFile("gate", "last\n");
        QCOMPARE(output.get(), QString("first\nlast\n"));
    }
};

KOLM_TEST_MAIN(TestRunCommand)
#include "tst_run_command.moc"
