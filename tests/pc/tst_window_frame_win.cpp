#include "base/manual_clock.h"
#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "ui/frameless_quick_window.h"

#include <QCursor>
#include <QQuickItem>
#include <QSignalSpy>

#include <optional>

#include <windows.h>

#include <dwmapi.h>

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
    void edgesAnswerTheHitTest_data();
    void edgesAnswerTheHitTest();
    void fixedWidthLeavesTopAndBottom_data();
    void fixedWidthLeavesTopAndBottom();
    void withoutABandThereAreNoEdges();
    void edgesComeBeforeTheTitleBar();
    void negativeCoordinatesAreSigned();
    void titleBarAnswersTheHitTest_data();
    void titleBarAnswersTheHitTest();
    void closeCommandOnlyTells();
    void anAlmostCloseCommandIsTheSystems();
    void otherCommandsReachTheSystem();
    void theStyleIsMendedAfterOtherCommands_data();
    void theStyleIsMendedAfterOtherCommands();
    void theFrameFollowsTheShadow();
    void ownCloseCloses();
    void styleFollowsTheShadow();
    void styleIsRenewedAfterShowing();
    void showNowIsSeenBeforeTheEventLoopRuns();

private:
    static HWND handleOf(QWindow &window) { return reinterpret_cast<HWND>(window.winId()); }
    static LRESULT ask(QWindow &window, int x, int y)
    {
        return ::SendMessageW(handleOf(window), WM_NCHITTEST, 0, MAKELPARAM(x, y));
    }
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
    // Makes the window known to the system, which takes less than showing it.
    static void create(FramelessQuickWindow &window)
    {
        window.setGeometry(100, 120, 400, 300);
        window.create();
    }
    static void show(FramelessQuickWindow &window)
    {
        create(window);
        window.show();
        QTRY_VERIFY(window.isExposed());
    }
};

void TestWindowFrameWin::edgesAnswerTheHitTest_data()
{
    QTest::addColumn<int>("fromLeft");
    QTest::addColumn<int>("fromTop");
    QTest::addColumn<int>("code");

    QTest::newRow("left") << 0 << 150 << HTLEFT;
    QTest::newRow("right") << 399 << 150 << HTRIGHT;
    QTest::newRow("top") << 200 << 0 << HTTOP;
    QTest::newRow("bottom") << 200 << 299 << HTBOTTOM;
    QTest::newRow("top left") << 7 << 7 << HTTOPLEFT;
    QTest::newRow("top right") << 392 << 7 << HTTOPRIGHT;
    QTest::newRow("bottom left") << 7 << 292 << HTBOTTOMLEFT;
    QTest::newRow("bottom right") << 392 << 292 << HTBOTTOMRIGHT;
    QTest::newRow("middle") << 200 << 150 << HTCLIENT;
}

void TestWindowFrameWin::edgesAnswerTheHitTest()
{
    QFETCH(int, fromLeft);
    QFETCH(int, fromTop);
    QFETCH(int, code);

    FramelessQuickWindow window;
    window.setResizeable(true);
    window.setBorderWidth(8);
    create(window);
    RECT rect = {};
    ::GetWindowRect(handleOf(window), &rect);
    QCOMPARE(int(ask(window, rect.left + fromLeft, rect.top + fromTop)), code);
}

void TestWindowFrameWin::fixedWidthLeavesTopAndBottom_data()
{
    QTest::addColumn<int>("fromLeft");
    QTest::addColumn<int>("fromTop");
    QTest::addColumn<int>("code");

    QTest::newRow("left") << 0 << 150 << HTCLIENT;
    QTest::newRow("right") << 399 << 150 << HTCLIENT;
    QTest::newRow("top") << 200 << 0 << HTTOP;
    QTest::newRow("bottom") << 200 << 299 << HTBOTTOM;
    QTest::newRow("top left") << 0 << 0 << HTTOP;
    QTest::newRow("bottom right") << 399 << 299 << HTBOTTOM;
}

void TestWindowFrameWin::fixedWidthLeavesTopAndBottom()
{
    QFETCH(int, fromLeft);
    QFETCH(int, fromTop);
    QFETCH(int, code);

    FramelessQuickWindow window;
    window.setResizeable(true);
    window.setBorderWidth(8);
    window.setMinimumWidth(400);
    window.setMaximumWidth(400);
    create(window);
    RECT rect = {};
    ::GetWindowRect(handleOf(window), &rect);
    QCOMPARE(int(ask(window, rect.left + fromLeft, rect.top + fromTop)), code);
}

void TestWindowFrameWin::withoutABandThereAreNoEdges()
{
    FramelessQuickWindow window;
    window.setResizeable(true);
    create(window);
    RECT rect = {};
    ::GetWindowRect(handleOf(window), &rect);
    for (int x : {0, 200, 399}) {
        for (int y : {0, 150, 299})
            QCOMPARE(int(ask(window, rect.left + x, rect.top + y)), HTCLIENT);
    }
}

void TestWindowFrameWin::edgesComeBeforeTheTitleBar()
{
    FramelessQuickWindow window;
    window.setResizeable(true);
    window.setBorderWidth(8);
    QQuickItem bar(window.contentItem());
    bar.setSize(QSizeF(400, 40));
    window.setTitleBar(&bar);
    create(window);

    QPoint point = window.mapToGlobal(QPoint(200, 3));
    QCursor::setPos(point);
    QTRY_COMPARE(QCursor::pos(), point);
    QCOMPARE(int(ask(window, point.x(), point.y())), HTTOP);

    point = window.mapToGlobal(QPoint(200, 20));
    QCursor::setPos(point);
    QTRY_COMPARE(QCursor::pos(), point);
    QCOMPARE(int(ask(window, point.x(), point.y())), HTCAPTION);
}

void TestWindowFrameWin::negativeCoordinatesAreSigned()
{
    FramelessQuickWindow window;
    window.setResizeable(true);
    window.setBorderWidth(8);
    create(window);
    ::SetWindowPos(handleOf(window), nullptr, -200, 50, 400, 300, SWP_NOZORDER | SWP_NOACTIVATE);
    QCOMPARE(int(ask(window, -200, 200)), HTLEFT);
}

void TestWindowFrameWin::titleBarAnswersTheHitTest_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("code");

    QTest::newRow("bare") << 300 << HTCAPTION;
    QTest::newRow("label") << 20 << HTCAPTION;
    QTest::newRow("button") << 60 << HTCLIENT;
}

void TestWindowFrameWin::titleBarAnswersTheHitTest()
{
    QFETCH(int, x);
    QFETCH(int, code);

    FramelessQuickWindow window;
    QQuickItem bar(window.contentItem());
    bar.setSize(QSizeF(400, 40));
    QQuickItem label(&bar);
    label.setSize(QSizeF(40, 40));
    QQuickItem button(&bar);
    button.setPosition(QPointF(40, 0));
    button.setSize(QSizeF(40, 40));
    window.setTitleBar(&bar);
    window.addIgnore(&label);
    create(window);

    const QPoint point = window.mapToGlobal(QPoint(x, 20));
    QCursor::setPos(point);
    QTRY_COMPARE(QCursor::pos(), point);
    QCOMPARE(int(ask(window, point.x(), point.y())), code);
}

void TestWindowFrameWin::closeCommandOnlyTells()
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

void TestWindowFrameWin::otherCommandsReachTheSystem()
{
    FramelessQuickWindow window;
    show(window);
    const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);
    ::SendMessageW(handleOf(window), WM_SYSCOMMAND, SC_MINIMIZE, 0);
    QVERIFY(::IsIconic(handleOf(window)));
    QCOMPARE(asked.count(), 0);
}

void TestWindowFrameWin::theStyleIsMendedAfterOtherCommands_data()
{
    QTest::addColumn<uint>("command");
    QTest::newRow("restore") << uint(SC_RESTORE);
    QTest::newRow("minimise") << uint(SC_MINIMIZE);
    QTest::newRow("maximise") << uint(SC_MAXIMIZE);
}

void TestWindowFrameWin::theStyleIsMendedAfterOtherCommands()
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

// Only the whole value is a request to close.
void TestWindowFrameWin::anAlmostCloseCommandIsTheSystems()
{
    FramelessQuickWindow window;
    show(window);
    const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);
    ::SendMessageW(handleOf(window), WM_SYSCOMMAND, SC_CLOSE | 1, 0);
    QTRY_VERIFY(!window.isVisible()); // the system closes it
    QCOMPARE(asked.count(), 0);
}

void TestWindowFrameWin::theFrameFollowsTheShadow()
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

void TestWindowFrameWin::ownCloseCloses()
{
    FramelessQuickWindow window;
    show(window);
    const QSignalSpy asked(&window, &FramelessQuickWindow::closeAll);
    QVERIFY(window.close());
    QVERIFY(!window.isVisible());
    QCOMPARE(asked.count(), 0);
}

void TestWindowFrameWin::styleFollowsTheShadow()
{
    FramelessQuickWindow window;
    create(window);
    window.setNeedShadow(false);
    QVERIFY(!canMinimise(window));
    window.setNeedShadow(true);
    QVERIFY(canMinimise(window));
}

void TestWindowFrameWin::styleIsRenewedAfterShowing()
{
    FramelessQuickWindow window;
    window.setNeedShadow(false);
    window.create();
    setCanMinimise(window, true);
    show(window);
    QTRY_VERIFY(!canMinimise(window));
}

void TestWindowFrameWin::showNowIsSeenBeforeTheEventLoopRuns()
{
    FramelessQuickWindow window;
    window.setGeometry(100, 120, 400, 300);
    const QSignalSpy frames(&window, &QQuickWindow::afterRendering);
    window.showNow();
    QVERIFY(window.isExposed());
    QVERIFY(frames.count() > 0);
    const int before = frames.count();
    window.setColor(Qt::red);
    window.showNow();
    QVERIFY(frames.count() > before);
}

KOLM_GUI_TEST_MAIN(TestWindowFrameWin)
#include "tst_window_frame_win.moc"
