#include "ui/frameless_quick_window.h"

#include "pc/window_frame.h"

#include <QCoreApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QSemaphore>

#include <atomic>
#include <chrono>
#include <memory>

namespace {

// The system lays out the frame again after it has told the window so.
constexpr std::chrono::milliseconds shadowDelay(100);
// How long a frame is waited for that another thread draws.
constexpr std::chrono::milliseconds longestFrame(250);

QPointer<QQmlEngine> &sharedEngine()
{
    static QPointer<QQmlEngine> engine;
    return engine;
}

} // namespace

FramelessQuickWindow::FramelessQuickWindow(QWindow *parent)
    : FramelessQuickWindow(Clock::system(), parent)
{
}

FramelessQuickWindow::FramelessQuickWindow(Clock &clock, QWindow *parent)
    : QQuickView(sharedEngine() ? sharedEngine().data() : new QQmlEngine, parent), clock_(clock)
{
    // Some waits leave the windows without an answer for many seconds.
    static const bool once = (window_frame::forbidGhosts(), true);
    Q_UNUSED(once)
    if (engine() != sharedEngine())
        engine()->setParent(this);
    setFlags(flags() | Qt::FramelessWindowHint);
    connect(this, &FramelessQuickWindow::needShadowChanged, this,
            &FramelessQuickWindow::updateShadow);
    connect(this, &FramelessQuickWindow::transientParentChanged, this,
            &FramelessQuickWindow::parentWinChanged);
}

void FramelessQuickWindow::setSharedEngine(QQmlEngine *engine)
{
    sharedEngine() = engine;
}

bool FramelessQuickWindow::activity() const
{
    return isActive();
}

void FramelessQuickWindow::setNeedShadow(bool needShadow)
{
    if (needShadow_ == needShadow)
        return;
    needShadow_ = needShadow;
    emit needShadowChanged();
}

void FramelessQuickWindow::setTitleBar(QQuickItem *titleBar)
{
    if (titleBar_ == titleBar)
        return;
    titleBar_ = titleBar;
    emit titleBarChanged();
    if (!titleBar)
        return;
    connect(titleBar, &QObject::destroyed, this, [this, titleBar] {
        if (titleBar_ != titleBar)
            return;
        titleBar_ = nullptr;
        emit titleBarChanged();
    });
}

void FramelessQuickWindow::setResizeable(bool resizeable)
{
    if (resizeable_ == resizeable)
        return;
    resizeable_ = resizeable;
    emit resizeableChanged();
}

void FramelessQuickWindow::setBorderWidth(int borderWidth)
{
    if (borderWidth_ == borderWidth)
        return;
    borderWidth_ = borderWidth;
    emit borderWidthChanged();
}

QWindow *FramelessQuickWindow::parentWin() const
{
    return transientParent();
}

void FramelessQuickWindow::setParentWin(QWindow *parentWin)
{
    setTransientParent(parentWin);
}

void FramelessQuickWindow::addIgnore(QQuickItem *item)
{
    ignored_.insert(item);
}

void FramelessQuickWindow::reqActive()
{
    requestActivate();
}

void FramelessQuickWindow::showNow()
{
    setVisible(true);
    // The system keeps a window where it was when it shows it again.
    window_frame::putInFront(*this);
    if (!isExposed())
        window_frame::putOnScreen(*this);
    drawNow();
    // What its text goes with is seen there.
    if (auto *below = qobject_cast<FramelessQuickWindow *>(transientParent()))
        below->drawNow();
    window_frame::flush();
}

void FramelessQuickWindow::drawNow()
{
    if (!isExposed())
        return;
    // A frame counts that is drawn of what there is now. The thread that draws may
    // still be in these when nobody waits for it any more.
    struct Frame
    {
        std::atomic<bool> current{false};
        QSemaphore swapped;
    };
    const auto frame = std::make_shared<Frame>();
    const auto onSync = connect(
        this, &QQuickWindow::afterSynchronizing, this, [frame] { frame->current = true; },
        Qt::DirectConnection);
    const auto onSwap = connect(
        this, &QQuickWindow::frameSwapped, this,
        [frame] {
            if (frame->current)
                frame->swapped.release();
        },
        Qt::DirectConnection);
    update(); // also when nothing has changed
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(this, &request);
    frame->swapped.tryAcquire(1, static_cast<int>(longestFrame.count()));
    disconnect(onSync);
    disconnect(onSwap);
}

bool FramelessQuickWindow::close()
{
    const QPointer<FramelessQuickWindow> self = this;
    const bool outer = closing_;
    closing_ = true;
    const bool closed = QQuickView::close();
    if (self)
        closing_ = outer;
    return closed;
}

bool FramelessQuickWindow::nativeEvent(const QByteArray &eventType, void *message, long *result)
{
    using Kind = window_frame::Message::Kind;
    const window_frame::Message read = window_frame::readMessage(eventType, message);
    switch (read.kind) {
    case Kind::HitTest: {
        hit_test::Code code = edgeAt(read.frame, read.point);
        if (code == hit_test::Undecided)
            code = hit_test::captionAt(titleBarSpot(mapFromGlobal(QCursor::pos())));
        *result = code;
        return code != hit_test::Undecided;
    }
    case Kind::CloseRequest:
        *result = 0;
        emit closeAll();
        return true;
    case Kind::FrameMayReset:
        clock_.singleShot(shadowDelay, this, [this] { updateShadow(); });
        break;
    case Kind::Other:
        break;
    }
    return QQuickView::nativeEvent(eventType, message, result);
}

bool FramelessQuickWindow::event(QEvent *event)
{
    if (event->type() == QEvent::Close && !closing_ && window_frame::closeEventIsRequest()) {
        event->ignore();
        const QPointer<FramelessQuickWindow> self = this;
        emit closeAll();
        // A window that its own handler has put away does not stand in the way
        // of an application that closes all its windows to quit.
        if (self && !isVisible())
            event->accept();
        return true;
    }
    if (event->type() == QEvent::MouseButtonPress) {
        const auto *press = static_cast<QMouseEvent *>(event);
        if (press->button() == Qt::LeftButton && startDragAt(press->pos()))
            return true;
    }
    return QQuickView::event(event);
}

hit_test::Code FramelessQuickWindow::edgeAt(const hit_test::Frame &frame, const QPoint &point) const
{
    return hit_test::edgeAt(frame, {resizeable_, borderWidth_, minimumSize(), maximumSize()},
                            point);
}

hit_test::TitleBarSpot FramelessQuickWindow::titleBarSpot(const QPointF &scenePoint) const
{
    if (!titleBar_)
        return hit_test::TitleBarSpot::Outside;
    const QPointF point = titleBar_->mapFromScene(scenePoint);
    if (!titleBar_->contains(point))
        return hit_test::TitleBarSpot::Outside;
    QQuickItem *child = titleBar_->childAt(point.x(), point.y());
    if (!child)
        return hit_test::TitleBarSpot::Bare;
    return ignored_.count(child) ? hit_test::TitleBarSpot::Label : hit_test::TitleBarSpot::Control;
}

void FramelessQuickWindow::updateShadow()
{
    window_frame::applyShadow(*this, needShadow_);
}

// For window managers that do not ask where the caption is.
bool FramelessQuickWindow::startDragAt(const QPoint &scenePoint)
{
    const qreal ratio = devicePixelRatio();
    const hit_test::Frame frame{0, 0, qRound(width() * ratio), qRound(height() * ratio)};
    hit_test::Code code = edgeAt(frame, (QPointF(scenePoint) * ratio).toPoint());
    if (code == hit_test::Undecided)
        code = hit_test::captionAt(titleBarSpot(scenePoint));
    return window_frame::startDrag(*this, code);
}
