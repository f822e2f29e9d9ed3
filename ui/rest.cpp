#include "ui/rest.h"

#include "pc/power_mode.h"

#include <QEvent>
#include <QGuiApplication>

namespace {

// Whether they keep what they draw with while they are not seen.
void setKeeping(bool keeping)
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows) {
        auto *quick = qobject_cast<QQuickWindow *>(window);
        if (!quick)
            continue;
        quick->setPersistentOpenGLContext(keeping);
        quick->setPersistentSceneGraph(keeping);
        if (!keeping)
            quick->releaseResources();
    }
}

} // namespace

Rest::Rest(QObject *parent) : QObject(parent) {}

Rest::~Rest()
{
    if (resting_)
        power_mode::setEfficient(false);
}

void Rest::setWindow(QQuickWindow *window)
{
    if (window_ == window)
        return;
    if (window_)
        window_->removeEventFilter(this);
    window_ = window;
    if (window_)
        window_->installEventFilter(this);
    emit windowChanged();
    update();
}

void Rest::setAllowed(bool allowed)
{
    if (allowed_ == allowed)
        return;
    allowed_ = allowed;
    emit allowedChanged();
    update();
}

bool Rest::eventFilter(QObject *, QEvent *event)
{
    // Not before the window itself knows of it: what is on the screen cannot be
    // given back.
    if (event->type() == QEvent::WindowStateChange || event->type() == QEvent::Expose)
        QMetaObject::invokeMethod(this, &Rest::update, Qt::QueuedConnection);
    return false;
}

void Rest::update()
{
    const bool unseen = window_ && window_->windowStates().testFlag(Qt::WindowMinimized);
    if (allowed_ && unseen)
        begin();
    else if (resting_)
        end();
}

// Once more with each event: another window may have come, or a window may have
// gone from the screen only now.
void Rest::begin()
{
    setKeeping(false);
    if (resting_)
        return;
    resting_ = true;
    power_mode::setEfficient(true);
}

void Rest::end()
{
    resting_ = false;
    power_mode::setEfficient(false);
    setKeeping(true);
}
