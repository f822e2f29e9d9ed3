#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/win/installed_program_win.h"

#include <QFile>
#include <QJsonArray>

#include <windows.h>

#include <vector>

using namespace installed_program;

namespace {

const QStringList steamVr{"vrmonitor.exe", "vrserver.exe", "vrcompositor.exe"};

// The windows that the system tells: all without a parent, also hidden ones.
std::vector<HWND> windowsOf(qint64 pid)
{
    struct Search
    {
        DWORD pid;
        std::vector<HWND> found;
    } search{static_cast<DWORD>(pid), {}};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto *wanted = reinterpret_cast<Search *>(parameter);
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            if (owner == wanted->pid)
                wanted->found.push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// Tells every window as the system does at a log-off; whether all answered yes.
bool tell(const Copy &program, UINT message, WPARAM ends)
{
    bool agreed = true;
    for (HWND window : windowsOf(program.pid())) {
        DWORD_PTR answer = 0;
        if (SendMessageTimeoutW(window, message, ends, static_cast<LPARAM>(ENDSESSION_LOGOFF),
                                SMTO_NORMAL, limit, &answer))
            agreed = agreed && answer;
    }
    return agreed;
}

bool write(const QString &path, const char *text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) > 0;
}

// As somebody who is registered but has no server yet, and has stored nothing.
bool takeFilesAway()
{
    return write(openVrPaths(), R"({"external_drivers":["C:\\KOLM"],"runtime":["C:\\SteamVR"]})") &&
           write(programFolder() + "/session.json", R"({"sessionSettings":{"headset":{}}})") &&
           QFile::remove(dataFolder() + "/set.json") &&
           QFile::remove(dataFolder() + "/setting.inf");
}

bool isRegistered()
{
    return !json(openVrPaths()).value("external_drivers").toArray().isEmpty();
}

} // namespace

// The installed program when the user's session ends.
class LogOffWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(installAll()); }

    void init()
    {
        TestCase::init();
        QVERIFY(layOutFiles(true));
        program_ = std::make_unique<Copy>();
        QVERIFY(program_->start());
        QVERIFY(waitUntil([] { return content(serverLog()).contains(";true;100"); }));
        QVERIFY(waitUntil([] { return !isRegistered(); }));
        QVERIFY(takeFilesAway());
    }

    void cleanup()
    {
        const bool failed = QTest::currentTestFailed();
        program_.reset();
        // The next run would take them for its own.
        end("streaming-server-sim.exe");
        QVERIFY(endSteam() && waitUntil([] { return !runs("streaming-server-sim.exe"); }));
        TestCase::cleanup();
        if (failed)
            qInfo().noquote() << "The program's log:\n" + log();
    }

    void aRefusedLogOffChangesNothing()
    {
        QVERIFY(tell(*program_, WM_QUERYENDSESSION, 0));
        tell(*program_, WM_ENDSESSION, FALSE);
        // Longer than closing would take to begin.
        const int lines = pollsLogged();
        QVERIFY(waitUntil([&] { return pollsLogged() > lines; }));
        QVERIFY(program_->isRunning());
        QVERIFY(program_->window());
        for (const QString &name : steamVr)
            QVERIFY2(runs(name), qPrintable(name));
        QVERIFY(isRegistered());
        QVERIFY(!QFile::exists(dataFolder() + "/set.json"));

        program_->askToClose();
        QCOMPARE(program_->waitForEnd(), std::optional<int>(0));
    }

    void theEndOfTheSessionFindsEverythingInOrder()
    {
        QVERIFY(tell(*program_, WM_QUERYENDSESSION, 0));
        tell(*program_, WM_ENDSESSION, TRUE);
        expectOrder();
    }

    void soDoesTheOneJustAfterTheWindowWasClosed()
    {
        program_->askToClose();
        tell(*program_, WM_QUERYENDSESSION, 0);
        tell(*program_, WM_ENDSESSION, TRUE);
        QVERIFY(program_->waitForEnd());
        QVERIFY(!isRegistered());
        QCOMPARE(json(dataFolder() + "/set.json").value("lastSn").toString(), headset);
    }

private:
    static int pollsLogged() { return content(serverLog()).count(";true;100"); }

    // As the system may end the process now, looked at before it has ended.
    void expectOrder()
    {
        QVERIFY(!isRegistered());
        QCOMPARE(json(dataFolder() + "/set.json").value("lastSn").toString(), headset);
        QVERIFY(content(dataFolder() + "/setting.inf").startsWith(headset.toLatin1()));
        QVERIFY(content(programFolder() + "/session.json").contains(headset.toLatin1()));
        QCOMPARE(program_->waitForEnd(), std::optional<int>(0));
        for (const QString &name : steamVr)
            QVERIFY2(runs(name), qPrintable(name));
    }

    const QString headset = QStringLiteral("D3SIM00001");
    std::unique_ptr<Copy> program_;
};

KOLM_GUI_TEST_MAIN(LogOffWinTest)
#include "tst_log_off_win.moc"
