#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/win/input_win.h"
#include "tests/win/installed_program_win.h"

#include <QFile>
#include <QFileInfo>

#include <windows.h>

using namespace installed_program;
using namespace input;

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
        const bool isEnded = endSteam();
        const bool restored = installAll(); // whoever comes next finds all as it was
        TestCase::cleanup();
        QVERIFY(isEnded);
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

        click(noticeBeside(program), QPoint(320, 200)); // where nothing is: it gets the keys
        press(VK_TAB);                                  // the icon that closes it
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
