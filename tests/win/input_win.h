// The mouse and the keyboard of the system, in place of a person's.
#pragma once

#include <QPoint>

#include <windows.h>

namespace input {

POINT onScreen(HWND window, const QPoint &place);

// Clicks there in the window, counted from its corner.
void click(HWND window, const QPoint &place);
// Presses and lets go.
void press(WORD key);

} // namespace input
