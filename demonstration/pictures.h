// Pictures of windows, as they are on the screen. GUI thread.
#pragma once

#include <QImage>
#include <QList>

#include <functional>

class QObject;
class QQuickWindow;

namespace pictures {

// Hands the window's picture to `then`, a null one when there is none; at once
// or, where there is no screen, when its content has been drawn once more,
// unless `context` is gone by then.
void take(QQuickWindow &window, QObject *context, std::function<void(const QImage &)> then);

// One picture of windows that lie upon each other, the one behind first, which
// is as large as the picture. Null without a window.
QImage together(const QList<QQuickWindow *> &windows);

} // namespace pictures
