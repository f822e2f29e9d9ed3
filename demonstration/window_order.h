// Which of the program's windows lies above which. GUI thread.
#pragma once

#include <QList>

class QQuickWindow;

namespace window_order {

// The same windows, the one behind first, as the screen has them. Those that the
// screen does not show, and all where there is none to ask, keep their order and
// stand in front.
QList<QQuickWindow *> fromBehind(const QList<QQuickWindow *> &windows);

} // namespace window_order
