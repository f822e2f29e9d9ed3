#include "pc/window_frame.h"

#include <QWindow>

#include <windows.h>

#include <dwmapi.h>
#include <windowsx.h>

namespace window_frame {

Message readMessage(const QByteArray &eventType, void *message)
{
    Message read;
    if (eventType != "windows_generic_MSG")
        return read;

    const MSG *native = static_cast<const MSG *>(message);
    switch (native->message) {
    case WM_NCHITTEST: {
        RECT rect = {};
        ::GetWindowRect(native->hwnd, &rect);
        read.kind = Message::Kind::HitTest;
        read.frame = {rect.left, rect.top, rect.right, rect.bottom};
        read.point = QPoint(GET_X_LPARAM(native->lParam), GET_Y_LPARAM(native->lParam));
        break;
    }
    case WM_SYSCOMMAND:
        // The whole value, without masking off the low four bits: only the
        // system menu and the keyboard send it so.
        read.kind =
            native->wParam == SC_CLOSE ? Message::Kind::CloseRequest : Message::Kind::FrameMayReset;
        break;
    case WM_SHOWWINDOW:
        read.kind = Message::Kind::FrameMayReset;
        break;
    default:
        break;
    }
    return read;
}

void applyShadow(QWindow &window, bool needShadow)
{
    if (!window.handle())
        return;
    const HWND hwnd = reinterpret_cast<HWND>(window.winId());

    LONG style = ::GetWindowLongW(hwnd, GWL_STYLE);
    if (needShadow)
        style |= WS_MINIMIZEBOX;
    else
        style &= ~WS_MINIMIZEBOX;
    ::SetWindowLongW(hwnd, GWL_STYLE, style);

    BOOL composition = FALSE;
    if (FAILED(::DwmIsCompositionEnabled(&composition)) || !composition)
        return;
    const DWMNCRENDERINGPOLICY policy = needShadow ? DWMNCRP_ENABLED : DWMNCRP_DISABLED;
    ::DwmSetWindowAttribute(hwnd, DWMWA_NCRENDERING_POLICY, &policy, sizeof policy);
    const MARGINS onePixel = {1, 1, 1, 1};
    ::DwmExtendFrameIntoClientArea(hwnd, &onePixel);
}

bool closeEventIsRequest()
{
    return false;
}

void forbidGhosts()
{
    ::DisableProcessWindowsGhosting();
}

void putInFront(QWindow &window)
{
    ::SetWindowPos(reinterpret_cast<HWND>(window.winId()), HWND_TOP, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

void putOnScreen(QWindow &window)
{
    // Has the window painted at once instead of when no other message waits.
    ::UpdateWindow(reinterpret_cast<HWND>(window.winId()));
}

void flush()
{
    ::GdiFlush();
}

bool startDrag(QWindow &, hit_test::Code)
{
    return false;
}

} // namespace window_frame
