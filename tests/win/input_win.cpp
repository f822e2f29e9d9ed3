#include "tests/win/input_win.h"

namespace input {

namespace {

void send(INPUT input)
{
    SendInput(1, &input, sizeof input);
}

} // namespace

POINT onScreen(HWND window, const QPoint &place)
{
    RECT rect = {};
    GetWindowRect(window, &rect);
    return {rect.left + place.x(), rect.top + place.y()};
}

void click(HWND window, const QPoint &place)
{
    const POINT point = onScreen(window, place);
    SetCursorPos(point.x, point.y);
    for (const DWORD flag : {MOUSEEVENTF_LEFTDOWN, MOUSEEVENTF_LEFTUP}) {
        INPUT event = {};
        event.type = INPUT_MOUSE;
        event.mi.dwFlags = flag;
        send(event);
    }
}

void press(WORD key)
{
    for (const DWORD flag : {DWORD(0), DWORD(KEYEVENTF_KEYUP)}) {
        INPUT event = {};
        event.type = INPUT_KEYBOARD;
        event.ki.wVk = key;
        event.ki.dwFlags = flag;
        send(event);
    }
}

} // namespace input
