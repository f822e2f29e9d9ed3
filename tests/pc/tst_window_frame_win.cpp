#include "base/manual_clock.h"
#include "tests/pc/framed_window_win.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

#include <optional>

#include <windows.h>

#include <dwmapi.h>

using namespace framed;

namespace {

// What this program asks the desktop's composition for, which not every system
// shows. Made once, it hears everything from then on.
struct Composition
{
    DWORD attribute = 0;
    DWORD policy = 0;
    std::optional<MARGINS> frame;

    static Composition &spied()
    {
        static Composition composition;
        static const bool hooked =
            hook("DwmSetWindowAttribute", reinterpret_cast<void *>(setWindowAttribute)) &&
            hook("DwmExtendFrameIntoClientArea", reinterpret_cast<void *>(extendFrame));
        if (!hooked)
            qFatal("this program does not ask for composition");
        return composition;
    }

private:
    static HRESULT WINAPI setWindowAttribute(HWND, DWORD attribute, LPCVOID value, DWORD size)
    {
        spied().attribute = attribute;
        if (size == sizeof(DWORD))
            spied().policy = *static_cast<const DWORD *>(value);
        return S_OK;
    }
    static HRESULT WINAPI extendFrame(HWND, const MARGINS *frame)
    {
        spied().frame = *frame;
        return S_OK;
    }

    // Puts `replacement` in the place of a function that this program imports.
    static bool hook(const char *function, void *replacement)
    {
        char *program = reinterpret_cast<char *>(::GetModuleHandleW(nullptr));
        const auto *dos = reinterpret_cast<IMAGE_DOS_HEADER *>(program);
        const auto *headers = reinterpret_cast<IMAGE_NT_HEADERS *>(program + dos->e_lfanew);
        const IMAGE_DATA_DIRECTORY &imports =
            headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
        auto *library =
            reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR *>(program + imports.VirtualAddress);
        for (; library->Name != 0; ++library) {
            if (::lstrcmpiA(program + library->Name, "dwmapi.dll") != 0)
                continue;
            const auto *name =
                reinterpret_cast<IMAGE_THUNK_DATA *>(program + library->OriginalFirstThunk);
            auto *address = reinterpret_cast<IMAGE_THUNK_DATA *>(program + library->FirstThunk);
            for (; name->u1.AddressOfData != 0; ++name, ++address) {
                const auto *byName =
                    reinterpret_cast<IMAGE_IMPORT_BY_NAME *>(program + name->u1.AddressOfData);
                if (qstrcmp(byName->Name, function) == 0)
                    return replace(&address->u1.Function, replacement);
            }
        }
        return false;
    }
    static bool replace(ULONGLONG *entry, void *replacement)
    {
        DWORD before = 0;
        if (!::VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &before))
            return false;
        *entry = reinterpret_cast<ULONGLONG>(replacement);
        return ::VirtualProtect(entry, sizeof *entry, before, &before);
    }
};

} // namespace

// The window type on the system's own messages.
class TestWindowFrameWin : public TestCase
{
    Q_OBJECT

private slots:
    void closeCommandOnlyTells()
    {
        FramelessQuickWindow window;
        show(window);
        const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);
        ::SendMessageW(handleOf(window), WM_SYSCOMMAND, SC_CLOSE, 0);
        QCoreApplication::processEvents();
        QCOMPARE(asked.count(), 1);
        QVERIFY(window.isVisible());
        QVERIFY(::IsWindow(handleOf(window)));
    }

    // Only the whole value is a request to close.
    void anAlmostCloseCommandIsTheSystems()
    {
        FramelessQuickWindow window;
        show(window);
        const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);
        ::SendMessageW(handleOf(window), WM_SYSCOMMAND, SC_CLOSE | 1, 0);
        QTRY_VERIFY(!window.isVisible()); // the system closes it
        QCOMPARE(asked.count(), 0);
    }

    void otherCommandsReachTheSystem()
    {
        FramelessQuickWindow window;
        show(window);
        const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);
        ::SendMessageW(handleOf(window), WM_SYSCOMMAND, SC_MINIMIZE, 0);
        QVERIFY(::IsIconic(handleOf(window)));
        QCOMPARE(asked.count(), 0);
    }

    void theStyleIsMendedAfterOtherCommands_data()
    {
        QTest::addColumn<uint>("command");
        QTest::newRow("restore") << uint(SC_RESTORE);
        QTest::newRow("minimise") << uint(SC_MINIMIZE);
        QTest::newRow("maximise") << uint(SC_MAXIMIZE);
    }

    void theStyleIsMendedAfterOtherCommands()
    {
        QFETCH(uint, command);
        ManualClock clock;
        FramelessQuickWindow window(clock);
        show(window);
        clock.advance(100); // that was for the showing
        QVERIFY(clock.idle());
        setCanMinimise(window, false);
        ::SendMessageW(handleOf(window), WM_SYSCOMMAND, command, 0);
        QVERIFY(!canMinimise(window));
        clock.advance(99);
        QVERIFY(!canMinimise(window));
        clock.advance(1);
        QVERIFY(canMinimise(window));
    }

    void theFrameFollowsTheShadow()
    {
        BOOL composed = FALSE;
        QVERIFY(SUCCEEDED(::DwmIsCompositionEnabled(&composed)) && composed);
        Composition &asked = Composition::spied();
        FramelessQuickWindow window;
        create(window);
        for (const bool shadow : {false, true}) {
            asked = Composition();
            window.setNeedShadow(shadow);
            QCOMPARE(asked.attribute, DWORD(DWMWA_NCRENDERING_POLICY));
            QCOMPARE(asked.policy, shadow ? 2UL : 1UL);
            QVERIFY(asked.frame);
            QCOMPARE(asked.frame->cxLeftWidth, 1);
            QCOMPARE(asked.frame->cxRightWidth, 1);
            QCOMPARE(asked.frame->cyTopHeight, 1);
            QCOMPARE(asked.frame->cyBottomHeight, 1);
        }
    }

    void ownCloseCloses()
    {
        FramelessQuickWindow window;
        show(window);
        const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);
        QVERIFY(window.close());
        QVERIFY(!window.isVisible());
        QCOMPARE(asked.count(), 0);
    }

    void styleFollowsTheShadow()
    {
        FramelessQuickWindow window;
        create(window);
        window.setNeedShadow(false);
        QVERIFY(!canMinimise(window));
        window.setNeedShadow(true);
        QVERIFY(canMinimise(window));
    }

    void styleIsRenewedAfterShowing()
    {
        FramelessQuickWindow window;
        window.setNeedShadow(false);
        window.create();
        setCanMinimise(window, true);
        show(window);
        QTRY_VERIFY(!canMinimise(window));
    }

private:
    static bool canMinimise(QWindow &window)
    {
        return ::GetWindowLongW(handleOf(window), GWL_STYLE) & WS_MINIMIZEBOX;
    }

    static void setCanMinimise(QWindow &window, bool can)
    {
        const LONG style = ::GetWindowLongW(handleOf(window), GWL_STYLE);
        ::SetWindowLongW(handleOf(window), GWL_STYLE,
                         can ? style | WS_MINIMIZEBOX : style & ~WS_MINIMIZEBOX);
    }
};

KOLM_GUI_TEST_MAIN(TestWindowFrameWin)
#include "tst_window_frame_win.moc"
