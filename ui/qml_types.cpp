#include "ui/qml_types.h"

#include "ui/clock_timer.h"
#include "ui/frameless_quick_window.h"
#include "ui/rest.h"

#include <QtQml>

void registerUiTypes()
{
    qmlRegisterType<FramelessQuickWindow>("QtHeron.Window", 1, 0, "FramelessWindow");
    qmlRegisterType<ClockTimer>("QtHeron.Window", 1, 0, "ClockTimer");
    qmlRegisterType<Rest>("QtHeron.Window", 1, 0, "Rest");
}
