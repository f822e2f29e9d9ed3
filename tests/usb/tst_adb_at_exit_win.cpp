#include "sysinfo/system_info.h"
#include "tests/support/test_case.h"
#include "tests/usb/adb_pc.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

namespace {

constexpr int limit = 60000; // ms

} // namespace

// The manager of a whole process ends after its application object.
class AdbAtExitTest : public TestCase
{
    Q_OBJECT

private slots:
    void theAdbThatWasStartedEndsWithTheProgram()
    {
        AdbPc pc;
        AdbPc::install(path("tools"));
        pc.setSearchPath(path("tools"));
        pc.plug("PA7910\tdevice\n");
        runToItsEnd();
        QVERIFY(pc.calls().size() >= 2);
        QVERIFY(!pc.serverRuns());
        QVERIFY(!SystemInfo::isProcessRunning("adb.exe"));
    }

    void anEarlierServerStaysWithoutPorts()
    {
        AdbPc pc;
        const QString adb = AdbPc::install(path("tools"));
        pc.plug("PA7910\tdevice\n");
        QVERIFY(pc.startServer(adb));
        pc.ask({"forward", "tcp:0", "tcp:9943"});
        pc.ask({"reverse", "tcp:50000", "tcp:50000"});
        runToItsEnd();
        QVERIFY(pc.serverRuns());
        QCOMPARE(pc.ask({"forward", "--list"}), QString("\n"));
        QCOMPARE(pc.ask({"reverse", "--list"}), QString("\n"));
        const QStringList calls = pc.calls();
        QVERIFY(calls.size() >= 3);
        QVERIFY(calls[calls.size() - 2].endsWith(" [forward] [--remove-all]"));
        QVERIFY(calls.last().endsWith(" [reverse] [--remove-all]"));
    }

    void aKilledProgramTakesItsCommandWithIt()
    {
        AdbPc pc;
        QVERIFY(pc.startServer(AdbPc::install(path("tools"))));
        pc.hang(true);
        QProcess user;
        user.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
        user.start(ADB_USER, QStringList());
        QTRY_COMPARE_WITH_TIMEOUT(pc.calls().size(), 1, limit);
        QCOMPARE(AdbPc::processes(), 2);
        user.kill();
        QVERIFY(user.waitForFinished(limit));
        QTRY_COMPARE_WITH_TIMEOUT(AdbPc::processes(), 1, limit);
        QVERIFY(pc.serverRuns());
        QCOMPARE(pc.calls().size(), 1); // the interpreter did not go on with its line
    }

private:
    static void runToItsEnd()
    {
        QProcess user;
        user.setProcessEnvironment(QProcessEnvironment::systemEnvironment());
        user.start(ADB_USER, QStringList());
        QVERIFY(user.waitForFinished(limit));
        QCOMPARE(user.exitStatus(), QProcess::NormalExit);
        QCOMPARE(user.exitCode(), 0);
    }
};

KOLM_TEST_MAIN(AdbAtExitTest)
#include "tst_adb_at_exit_win.moc"
