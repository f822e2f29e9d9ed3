// Windows of ours as the system sees them.
#pragma once

#include "ui/frameless_quick_window.h"

#include <QTest>

#include <windows.h>

namespace framed {

inline HWND handleOf(QWindow &window)
{
    return reinterpret_cast<HWND>(window.winId());
}

// Makes the window known to the system, which takes less than showing it.
inline void create(FramelessQuickWindow &window)
{
    window.setGeometry(100, 120, 400, 300);
    window.create();
}

inline void show(FramelessQuickWindow &window)
{
    create(window);
    window.show();
    QTRY_VERIFY(window.isExposed());
}

} // namespace framed
