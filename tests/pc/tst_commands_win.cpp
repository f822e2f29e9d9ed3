#include "pc/adb_shell.h"
#include "pc/processes.h"
#include "pc/shell_launch.h"
#include "pc/system_programs.h"
#include "sysinfo/system_info.h"
#include "tests/pc/test_signature_win.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <chrono>
#include <future>

#include <windows.h>

namespace {

// An event that a talker waits for; set at the latest when it goes, so that
// nobody is left behind.
class Event
{
public:
    explicit Event(const char *name)
        : name_(name), handle_(CreateEventA(nullptr, TRUE, FALSE, name))
    {
    }
    ~Event()
    {
        set();
        CloseHandle(handle_);
    }
    void set() { SetEvent(handle_); }
    QByteArray name() const { return name_; }

private:
    QByteArray name_;
    HANDLE handle_;
};

} // namespace

// Commands and what is started with rights, with programs that play them.
class CommandsWinTest : public TestCase
{
    Q_OBJECT

    // The talker's program under another name, in the test's folder: Windows
    // looks there before it looks among its own programs, unless it is told where one is.
    QString standIn(const QString &name)
    {
        const QString program = path(name);
        if (!QFile::copy(QStringLiteral(KOLM_TALKER), program))
            qFatal("no stand-in %s", qPrintable(name));
        return program;
    }
    QByteArray talk(const QByteArray &arguments)
    {
        if (!QFile::exists(path("talker.exe")))
            standIn("talker.exe");
        return "talker " + arguments;
    }

    bool isStandInRunning(const QString &name) const
    {
        const std::vector<processes::Entry> running = processes::list();
        return std::any_of(running.begin(), running.end(), [&](const processes::Entry &entry) {
            const QString program = QDir::fromNativeSeparators(processes::modulePath(entry.pid));
            return program.compare(path(name), Qt::CaseInsensitive) == 0;
        });
    }
    void takeStandIns() { system_programs::lookIn(QDir::toNativeSeparators(dir())); }

private slots:
    void cleanup()
    {
        system_programs::lookIn({});
        TestCase::cleanup();
    }

    void whatLiesInTheWorkingFolderIsNotStarted()
    {
        for (const char *name : {"netsh", "powershell", "cmd", "taskkill", "explorer"})
            standIn(name + QStringLiteral(".exe"));
        // They would be found there.
        QProcess::execute("netsh", {"show"});
        QVERIFY(QFile::remove("netsh.heard"));

        SystemInfo::runCommand("netsh advfirewall firewall show rule name=\"x\" verbose");
        QCOMPARE(SystemInfo::runCommand("cmd /c echo hello"), QString("hello\r\n"));
        {
            const SystemInfo info;
            auto *query = info.findChild<QProcess *>();
            QTRY_COMPARE(query->state(), QProcess::NotRunning);
        }
        const adb_shell::Call call = adb_shell::call("echo hello");
        QCOMPARE(QProcess::execute(call.program, call.arguments), 0);
        processes::terminate(0xfffffff0); // nobody's
        QVERIFY(shell_launch::startDetached("explorer", {"kolm-nothing://x"}));
        QTRY_VERIFY(!isStandInRunning("explorer.exe"));
        QCOMPARE(QDir(dir()).entryList({"*.heard"}), QStringList());
    }

    void theSystemsProgramsAreThereAndNowhereElse()
    {
        for (const char *name : {"netsh", "powershell", "cmd", "taskkill", "explorer"}) {
            const QString path = system_programs::pathOf(name);
            QVERIFY2(QDir::isAbsolutePath(path) && QFile::exists(path), qPrintable(path));
            QVERIFY(path.startsWith("C:\\windows\\", Qt::CaseInsensitive));
            QCOMPARE(system_programs::pathOf(name + QStringLiteral(".exe")), path);
        }
        QCOMPARE(system_programs::pathOf("steam.exe"), QString("steam.exe"));
        QCOMPARE(system_programs::pathOf("D:\\x\\cmd"), QString("D:\\x\\cmd"));
        QCOMPARE(system_programs::pathOf(""), QString(""));
    }

    void everythingThatWasWrittenComesBack()
    {
        QCOMPARE(SystemInfo::runCommand(talk("print 1")), QString("规则名称\n"));
        QCOMPARE(SystemInfo::runCommand(talk("print 0")), QString());
        QCOMPARE(SystemInfo::runCommand(talk("outputs")), QString("out\r\nerr\r\nout\r\n"));
    }

    void theSystemsOwnCommandsAnswerToo()
    {
        QCOMPARE(SystemInfo::runCommand("cmd /c echo hello"), QString("hello\r\n"));
        QCOMPARE(SystemInfo::runCommand("cmd /c exit 3"), QString());
    }

    void megabytesComeBackWhole()
    {
        const QString output = SystemInfo::runCommand(talk("print 1000000"));
        QCOMPARE(output.size(), 5000000);
        QVERIFY(output == QString("规则名称\n").repeated(1000000));
    }

    void aCommandThatDoesNotExistIsLogged()
    {
        QCOMPARE(SystemInfo::runCommand("no-such-tool --help"), QString());
        QCOMPARE(SystemInfo::runCommand(""), QString());
        QCOMPARE(logged(), QStringList({" CreateProcess failed!", " CreateProcess failed!"}));
    }

    void aCommandThatClosesItsOutputsIsNotWaitedFor()
    {
        Event go("kolm-commands-go");
        const QString output =
            SystemInfo::runCommand(talk("stop-talking " + go.name() + " late.txt"));
        QCOMPARE(output, QString("early"));
        QVERIFY(!QFile::exists("late.txt"));
        QVERIFY(SystemInfo::isProcessRunning("talker.exe"));
        go.set();
        QTRY_COMPARE(readFile("late.txt"), QByteArray("late"));
        QTRY_VERIFY(!SystemInfo::isProcessRunning("talker.exe"));
    }

    void theEndOfTheOutputIsWaitedForAndNotTheEndOfTheCommand()
    {
        Event go("kolm-commands-go");
        const QByteArray command = talk("leave-child " + go.name());
        std::future<QString> output =
            std::async(std::launch::async, [command] { return SystemInfo::runCommand(command); });
        // Of the command and its child only the child is left.
        QTRY_VERIFY(SystemInfo::isProcessRunning("talker.exe"));
        QCOMPARE(output.wait_for(std::chrono::seconds(0)), std::future_status::timeout);
        go.set();
        QCOMPARE(output.get(), QString("first\nlast\n"));
        QTRY_VERIFY(!SystemInfo::isProcessRunning("talker.exe"));
    }

    void aCommandOfTheSystemIsRunWithItsWholeLine()
    {
        takeStandIns();
        standIn("netsh.exe");
        writeFile("netsh.says", "Program: D:\\游戏\\vrserver.exe\r\nOk.\r\n");
        const QByteArray line =
            "netsh advfirewall firewall show rule name=\"SteamVR ORB vrserver\" verbose";
        QCOMPARE(SystemInfo::runCommand(line),
                 QString("Program: D:\\游戏\\vrserver.exe\r\nOk.\r\n"));
        const QByteArray heard = readFile("netsh.heard");
        QCOMPARE(QDir::fromNativeSeparators(QString::fromUtf8(heard.split('\n').value(0))), dir());
        QCOMPARE(heard.split('\n').value(1), line);
    }

    void theNetworkIsWhatPowershellSays_data()
    {
        QTest::addColumn<QByteArray>("says");
        QTest::addColumn<QString>("category");
        QTest::newRow("public") << QByteArray("NetworkCategory  : Public\r\n") << "Public";
        QTest::newRow("both") << QByteArray("NetworkCategory  : Private\r\n"
                                            "NetworkCategory  : Public\r\n")
                              << "Public";
        QTest::newRow("neither") << QByteArray("NetworkCategory  : DomainAuthenticated\r\n") << "";
    }
    void theNetworkIsWhatPowershellSays()
    {
        QFETCH(QByteArray, says);
        takeStandIns();
        standIn("powershell.exe");
        writeFile("powershell.says", says);
        const SystemInfo info;
        QCOMPARE(info.networkCategory(), QString("Private"));
        auto *query = info.findChild<QProcess *>();
        QTRY_COMPARE(query->state(), QProcess::NotRunning);
        QTEST(info.networkCategory(), "category");
        const QByteArray heard = readFile("powershell.heard").split('\n').value(1).simplified();
        QVERIFY2(heard.endsWith("powershell.exe\" /c \"Get-NetConnectionProfile | findstr "
                                "NetworkCategory\""),
                 heard.constData());
    }

    void aPowershellThatHangsLeavesTheNetworkPrivateAndHoldsNothingUp()
    {
        takeStandIns();
        standIn("powershell.exe");
        writeFile("powershell.hangs", "");
        {
            const SystemInfo info;
            QTRY_VERIFY(QFile::exists("powershell.heard"));
            QVERIFY(SystemInfo::isProcessRunning("powershell.exe"));
            QCOMPARE(info.networkCategory(), QString("Private"));
        }
        QTRY_VERIFY(!SystemInfo::isProcessRunning("powershell.exe"));
    }

    void theCablesInstallerRunsInItsFolderIfItIsSigned()
    {
        if (!test_signature::isAvailable())
            QSKIP("Nobody's signature can be trusted here.");
        const test_signature::Trusted trusted;
        const QString folder = path(QString("程序 & é"));
        QVERIFY(QDir().mkpath(folder + "/installaudio"));
        const QString installer = folder + "/installaudio/VBCABLE_Setup_x64";
        QVERIFY(QFile::copy(test_signature::signedProgram(), installer + ".exe"));
        SystemInfo::installVirtualCable(folder);
        QTRY_VERIFY(readFile(installer.mid(dir().size() + 1) + ".heard").count('\n') == 2);
        const QList<QByteArray> heard =
            readFile(installer.mid(dir().size() + 1) + ".heard").split('\n');
        QCOMPARE(QDir::fromNativeSeparators(QString::fromUtf8(heard[0])), folder);
        QVERIFY2(heard[1].trimmed().endsWith("VBCABLE_Setup_x64.exe\"") ||
                     heard[1].trimmed().endsWith("VBCABLE_Setup_x64.exe"),
                 heard[1].constData());
        QCOMPARE(logged().value(0), folder);
        QCOMPARE(logged().value(1), "install audio: signed by " + test_signature::signer());
        QVERIFY(logged().value(2).startsWith("install audio res: "));
        QVERIFY(logged().value(2).section(' ', -1).toInt() > 32);
    }

    void theCablesInstallerStaysWhereNobodyHasSignedIt()
    {
        QVERIFY(QDir().mkpath(path("installaudio")));
        QVERIFY(
            QFile::copy(QStringLiteral(KOLM_TALKER), path("installaudio/VBCABLE_Setup_x64.exe")));
        announce("install audio: nobody has signed the installer, it is not started");
        SystemInfo::installVirtualCable(dir());
        QCOMPARE(logged().last(), QString("install audio res: 5"));
    }

    void aMissingInstallerIsSeenInTheLogAlone()
    {
        SystemInfo::installVirtualCable(dir());
        QCOMPARE(logged().last(), QString("install audio res: 2"));
    }
};

KOLM_TEST_MAIN(CommandsWinTest)
#include "tst_commands_win.moc"
