#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/win/installed_program_win.h"

#include <QFile>
#include <QFileInfo>

#include <windows.h>

using namespace installed_program;

namespace {

const QSize mainWindow(1360, 875);
const SIZE notice = {640, 300};

// The window of a notice, which belongs to another process than the program's; null
// while there is none.
HWND noticeBeside(const Copy &program)
{
    struct Search
    {
        DWORD program;
        HWND found;
    } search{static_cast<DWORD>(program.pid()), nullptr};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto *wanted = reinterpret_cast<Search *>(parameter);
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            RECT rect = {};
            if (owner == wanted->program || !IsWindowVisible(window) ||
                !GetWindowRect(window, &rect) || rect.right - rect.left != notice.cx ||
                rect.bottom - rect.top != notice.cy)
                return TRUE;
            wanted->found = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

void send(INPUT input)
{
    SendInput(1, &input, sizeof input);
}

// Where there is nothing to click on, which gives it the keys.
void clickInto(HWND window)
{
    RECT rect = {};
    GetWindowRect(window, &rect);
    SetCursorPos(rect.left + 320, rect.top + 200);
    for (const DWORD flag : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
        INPUT input = {};
        input.type = INPUT_MOUSE;
        input.mi.dwFlags = flag;
        send(input);
    }
}

void press(WORD key)
{
    for (const DWORD flag : {DWORD(0), DWORD(KEYEVENTF_KEYUP)}) {
        INPUT input = {};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
        input.ki.dwFlags = flag;
        send(input);
    }
}

QString awayTool()
{
    return steamVrTool() + QStringLiteral(".away");
}

} // namespace

// The installed program, which waits for SteamVR before it has a window: somebody has
// left SteamVR running, and the tool that closes it is gone.
class WaitsWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        QVERIFY(installAll());
        QVERIFY(layOutFiles(true));
        QVERIFY(QFile::rename(steamVrTool(), awayTool()));
        QVERIFY(QProcess::startDetached(QFileInfo(steamVrTool()).path() + "/vrmonitor.exe",
                                        QStringList()));
        QVERIFY(waitUntil([] { return runs("vrmonitor.exe"); }));
    }

    void cleanup()
    {
        const bool failed = QTest::currentTestFailed();
        waitUntil([] {
            bool any = false;
            for (const char *name : {"vrmonitor.exe", "vrserver.exe", "vrcompositor.exe",
                                     "vrwebhelper.exe", "vrdashboard.exe", "steam.exe"}) {
                any = any || runs(name);
                end(name);
            }
            return !any;
        });
        const bool restored = installAll(); // whoever comes next finds all as it was
        TestCase::cleanup();
        if (failed)
            qInfo().noquote() << "The program's log:\n" + log();
        QVERIFY(restored);
    }

    void aSteamVRThatDoesNotCloseIsSaidAndEndedByKeys()
    {
        Copy program;
        QVERIFY(program.start());
        QVERIFY(waitUntil([&] { return noticeBeside(program) != nullptr; }));
        QVERIFY(!program.window()); // so far nothing else is to be seen of it
        QVERIFY(log().contains("[wait] steamvr lasts 3"));
        QVERIFY(runs("vrmonitor.exe"));

        clickInto(noticeBeside(program));
        press(VK_TAB); // the icon that closes it
        press(VK_TAB);
        press(VK_RETURN);
        QVERIFY(waitUntil([] { return !runs("vrmonitor.exe"); }));
        QVERIFY(waitUntil([&] { return !noticeBeside(program); }));
        QVERIFY(log().contains("[steam] the user ends SteamVR, which does not close"));
        QVERIFY(
            waitUntil([&] { return program.window() && program.window()->size() == mainWindow; }));
        QVERIFY(QFile::rename(awayTool(), steamVrTool()));
        program.askToClose();
        QCOMPARE(program.waitForEnd(), std::optional<int>(0));
    }

    void theNoticeGoesWithAProgramThatIsKilled()
    {
        Copy program;
        QVERIFY(program.start());
        QVERIFY(waitUntil([&] { return noticeBeside(program) != nullptr; }));
        program.kill();
        QVERIFY(waitUntil([&] { return !noticeBeside(program); }));
        QVERIFY(waitUntil([] { return !runs("KOLM_Streaming_Assistant.exe"); }));
    }
};

KOLM_GUI_TEST_MAIN(WaitsWinTest)
#include "tst_waits_win.moc"
