#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/win/input_win.h"
#include "tests/win/installed_program_win.h"

#include <QFile>
#include <QJsonObject>

#include <windows.h>

using namespace installed_program;
using namespace input;

namespace {

// Places in the main window, which always looks the same.
const QPoint bareTitle(600, 45);
const QPoint logo(60, 45);
const QPoint settingsButton(1156, 45);
const QPoint minimiseButton(1262, 45);
const QPoint closeButton(1318, 45);
const QPoint wirelessMode(876, 540);

const QSize mainSize(1360, 875);
const QSize settingsSize(760, 704);

// A window of that size which the process shows; null while there is none.
HWND windowOf(qint64 pid, const QSize &size)
{
    struct Search
    {
        DWORD pid;
        QSize size;
        HWND found;
    } search{static_cast<DWORD>(pid), size, nullptr};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto *wanted = reinterpret_cast<Search *>(parameter);
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            RECT rect = {};
            if (owner != wanted->pid || !IsWindowVisible(window) || !GetWindowRect(window, &rect) ||
                QSize(rect.right - rect.left, rect.bottom - rect.top) != wanted->size)
                return TRUE;
            wanted->found = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// The windows of the process that can be seen, as they lie upon each other, the one in
// front first.
QList<HWND> shownWindows(qint64 pid)
{
    QList<HWND> found;
    for (HWND window = GetTopWindow(nullptr); window; window = GetWindow(window, GW_HWNDNEXT)) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        if (owner == static_cast<DWORD>(pid) && IsWindowVisible(window))
            found.append(window);
    }
    return found;
}

// The one that lets the mouse through and has no button in the task bar.
bool isToast(HWND window)
{
    constexpr LONG_PTR style = WS_EX_TRANSPARENT | WS_EX_TOOLWINDOW;
    return (GetWindowLongPtrW(window, GWL_EXSTYLE) & style) == style;
}

// What the system would do with a press at that place.
LRESULT hitTest(HWND window, const QPoint &place)
{
    const POINT point = onScreen(window, place);
    SetCursorPos(point.x, point.y);
    return SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
}

} // namespace

// The installed program's window, worked as a person works it.
class ProgramWindowWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(installAll()); }

    void cleanup()
    {
        const bool isEnded = endSteam();
        end("streaming-server-sim.exe");
        // No page has complained.
        const QString said = log();
        TestCase::cleanup();
        QVERIFY(isEnded);
        QVERIFY2(!said.contains("qrc:/"), qPrintable(said));
    }

    // On a screen without OpenGL, as on a remote desktop, the program opens as well.
    void drawsWithWhatThisPcHas()
    {
        const bool without = qEnvironmentVariableIsSet("WITHOUT_OPENGL");
        qputenv("QSG_INFO", "1"); // Qt says what it draws with
        Copy program;
        const HWND window = start(&program, false);
        qunsetenv("QSG_INFO");
        QVERIFY(window);
        const QLatin1String said(without ? "windows are drawn without OpenGL: there is no OpenGL"
                                         : "threaded render loop");
        QVERIFY(waitUntil([said] { return log().contains(said); }));
        QCOMPARE(log().contains(QLatin1String("without OpenGL")), without);
        QVERIFY(waitUntil([] { return !QFile::exists(dataFolder() + "/opengl.trial"); }));
        PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
        QCOMPARE(program.waitForEnd().value_or(-1), 0);
    }

    void titleRowDragsExceptOnButtons()
    {
        Copy program;
        const HWND window = start(&program, false);
        QVERIFY(window);
        // The program learns of the mouse's new place a moment later.
        const auto answers = [&](const QPoint &place, LRESULT code) {
            return waitUntil([&] { return hitTest(window, place) == code; });
        };
        QVERIFY(answers(bareTitle, HTCAPTION));
        QVERIFY(answers(minimiseButton, HTCLIENT));
        QVERIFY(answers(logo, HTCAPTION));
        QVERIFY(answers(closeButton, HTCLIENT));
        QVERIFY(answers(bareTitle, HTCAPTION));
        QVERIFY(answers(QPoint(600, 400), HTCLIENT));
        QVERIFY(answers(bareTitle, HTCAPTION));
        QVERIFY(answers(QPoint(0, 400), HTCLIENT));
    }

    void maximisingSnapsBack()
    {
        Copy program;
        const HWND window = start(&program, false);
        QVERIFY(window);
        SetWindowPos(window, nullptr, 0, 0, 1600, 1000, SWP_NOZORDER);
        QVERIFY(waitUntil([&] {
            RECT rect = {};
            GetWindowRect(window, &rect);
            return QSize(rect.right - rect.left, rect.bottom - rect.top) == mainSize;
        }));
    }

    void minimisesAndComesBack()
    {
        Copy program;
        const HWND window = start(&program, false);
        QVERIFY(window);
        QVERIFY(waitUntil([&] { return GetWindowLongW(window, GWL_STYLE) & WS_MINIMIZEBOX; }));
        click(window, minimiseButton);
        QVERIFY(waitUntil([&] { return IsIconic(window) != FALSE; }));
        PostMessageW(window, WM_SYSCOMMAND, SC_RESTORE, 0);
        QVERIFY(waitUntil([&] { return windowOf(program.pid(), mainSize) && !IsIconic(window); }));
    }

    void firstRunGoesOnWithTheChosenLink()
    {
        Copy program;
        const HWND window = start(&program, false);
        QVERIFY(window);
        QVERIFY(!runs("steam.exe"));
        // The page may need a moment until it takes clicks.
        QVERIFY(waitUntil([&] {
            click(window, wirelessMode);
            return log().contains("setWiredOrWireless start: false");
        }));
        QVERIFY(waitUntil([] { return runs("steam.exe"); }));
        PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); // the toast is a window, too
        QVERIFY(program.waitForEnd());
    }

    void dialogIsOpenedByMouseAndClosedByKey()
    {
        Copy program;
        const HWND window = start(&program, true);
        QVERIFY(window);
        click(window, settingsButton);
        QVERIFY(waitUntil([&] { return windowOf(program.pid(), settingsSize) != nullptr; }));
        const HWND dialog = windowOf(program.pid(), settingsSize);
        QCOMPARE(GetWindow(dialog, GW_OWNER), window);
        QVERIFY(!(GetWindowLongW(dialog, GWL_STYLE) & WS_MINIMIZEBOX));
        // In the middle of the main window.
        const POINT corner = onScreen(dialog, QPoint(0, 0));
        const POINT expected = onScreen(window, QPoint(680 - 380, 440 - 352));
        QCOMPARE(QPoint(corner.x, corner.y), QPoint(expected.x, expected.y));
        click(dialog, QPoint(40, 670)); // where nothing is
        QVERIFY(waitUntil([&] {
            press(VK_ESCAPE);
            return windowOf(program.pid(), settingsSize) == nullptr;
        }));
        QVERIFY(program.isRunning());
        PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0); // the toast is a window, too
        QVERIFY(program.waitForEnd());
    }

    // This PC has no sound, of which a toast speaks with every poll.
    void toastLiesAboveADialog()
    {
        Copy program;
        const HWND window = start(&program, true);
        QVERIFY(window);
        const auto toast = [&] {
            for (const HWND shown : shownWindows(program.pid())) {
                if (isToast(shown))
                    return shown;
            }
            return HWND(nullptr);
        };
        // Made by now, and hidden: where the system leaves it is below the dialog.
        QVERIFY(waitUntil([&] { return toast() != nullptr; }));
        QVERIFY(waitUntil([&] { return toast() == nullptr; }));
        click(window, settingsButton);
        QVERIFY(waitUntil([&] { return windowOf(program.pid(), settingsSize) != nullptr; }));
        const HWND dialog = windowOf(program.pid(), settingsSize);
        QCOMPARE(shownWindows(program.pid()), (QList<HWND>{dialog, window}));

        QVERIFY(waitUntil([&] { return toast() != nullptr; }));
        QVERIFY(
            waitUntil([&] { return !toast() || shownWindows(program.pid()).first() == toast(); }));
        QCOMPARE(shownWindows(program.pid()), (QList<HWND>{toast(), dialog, window}));
        QCOMPARE(GetWindow(toast(), GW_OWNER), window);
        PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
        QVERIFY(program.waitForEnd());
    }

    void closeRequestOfADialogLeavesTheProgram()
    {
        Copy program;
        const HWND window = start(&program, true);
        QVERIFY(window);
        click(window, settingsButton);
        QVERIFY(waitUntil([&] { return windowOf(program.pid(), settingsSize) != nullptr; }));
        PostMessageW(windowOf(program.pid(), settingsSize), WM_SYSCOMMAND, SC_CLOSE, 0);
        QVERIFY(waitUntil([&] { return windowOf(program.pid(), settingsSize) == nullptr; }));
        QVERIFY(program.isRunning());
        QVERIFY(IsWindowVisible(window));

        // As Alt+F4 on the window itself: everything is left in order.
        PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
        const std::optional<int> code = program.waitForEnd();
        QVERIFY(code);
        QCOMPARE(*code, 0);
    }

    void closeButtonEndsTheProgram()
    {
        Copy program;
        const HWND window = start(&program, false);
        QVERIFY(window);
        QVERIFY(waitUntil([&] {
            click(window, closeButton);
            return !program.isRunning();
        }));
        const std::optional<int> code = program.waitForEnd();
        QVERIFY(code);
        QCOMPARE(*code, 0);
    }

private:
    // A program whose main window is on the screen.
    HWND start(Copy *copy, bool modeChosen)
    {
        if (!layOutFiles(modeChosen) || !copy->start())
            return nullptr;
        waitUntil([&] { return windowOf(copy->pid(), mainSize) != nullptr; });
        return windowOf(copy->pid(), mainSize);
    }
};

KOLM_GUI_TEST_MAIN(ProgramWindowWinTest)
#include "tst_program_window_win.moc"
