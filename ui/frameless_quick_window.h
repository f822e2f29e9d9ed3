// A top-level window that QML draws whole, frame and title included.
#pragma once

#include "base/clock.h"
#include "ui/hit_test.h"

#include <QPointer>
#include <QQuickView>

#include <set>

class QQuickItem;

// The type FramelessWindow of QML. The window has no frame of the system's, and
// yet the user can drag it by the item that QML names as its title bar, resize
// it by its edges when that is allowed, and ask it to close: such a request
// only emits closeAll(), and what closing means is up to QML. The program's own
// close() closes at once.
//
// GUI thread only. Neither the title bar nor the ignored items are owned.
class FramelessQuickWindow : public QQuickView
{
    Q_OBJECT

    Q_PROPERTY(bool activity READ activity NOTIFY activeChanged)
    // Whether the system draws a shadow; a window without one cannot be
    // minimised from the task bar either.
    Q_PROPERTY(bool needShadow READ needShadow WRITE setNeedShadow NOTIFY needShadowChanged)
    Q_PROPERTY(QQuickItem *titleBar READ titleBar WRITE setTitleBar NOTIFY titleBarChanged)
    Q_PROPERTY(bool resizeable READ resizeable WRITE setResizeable NOTIFY resizeableChanged)
    // Width in physical pixels of the strip along each edge that resizes.
    Q_PROPERTY(int borderWidth READ borderWidth WRITE setBorderWidth NOTIFY borderWidthChanged)
    Q_PROPERTY(QWindow *parentWin READ parentWin WRITE setParentWin NOTIFY transientParentChanged)

public:
    explicit FramelessQuickWindow(QWindow *parent = nullptr);
    // As above, with the time that the shadow waits for.
    explicit FramelessQuickWindow(Clock &clock, QWindow *parent = nullptr);

    // The engine that all windows made from now on belong to: name the one that
    // loads the QML. A window made without one has to bring an engine of its
    // own, which costs memory and time. Not owned; forgotten when destroyed.
    static void setSharedEngine(QQmlEngine *engine);

    bool activity() const;
    bool needShadow() const { return needShadow_; }
    void setNeedShadow(bool needShadow);
    QQuickItem *titleBar() const { return titleBar_; }
    void setTitleBar(QQuickItem *titleBar);
    bool resizeable() const { return resizeable_; }
    void setResizeable(bool resizeable);
    int borderWidth() const { return borderWidth_; }
    void setBorderWidth(int borderWidth);
    QWindow *parentWin() const;
    void setParentWin(QWindow *parentWin);

signals:
    void parentWinChanged();
    void titleBarChanged();
    void resizeableChanged();
    void needShadowChanged();
    void borderWidthChanged();
    // Not the base window's signal of that name: writing parentWin emits only
    // that one. This one, and parentWinChanged() after it, are for whoever
    // emits them.
    void transientParentChanged();
    // The user asks to close the window; it stays open until QML closes it.
    void closeAll();

public:
    // Lets a child of the title bar, such as a text, drag the window. It is
    // only ever compared, so it may be destroyed at any time.
    Q_INVOKABLE void addIgnore(QQuickItem *item);
    Q_INVOKABLE void reqActive();
    // Hides the base window's slot, so that the program's own wish can be told
    // from a close request where both arrive as the same event.
    Q_INVOKABLE bool close();
    // Shows the window above the program's others, which it does not take the
    // focus from, and has its present content, and that of the window that it
    // belongs to, on the screen when it returns, so that both are seen while the
    // GUI thread is busy with something long. Gives up after a quarter of a
    // second for each.
    Q_INVOKABLE void showNow();

protected:
    bool nativeEvent(const QByteArray &eventType, void *message, long *result) override;
    bool event(QEvent *event) override;

private:
    hit_test::Code edgeAt(const hit_test::Frame &frame, const QPoint &point) const;
    hit_test::TitleBarSpot titleBarSpot(const QPointF &scenePoint) const;
    void drawNow();
    void updateShadow();
    bool startDragAt(const QPoint &scenePoint);

    Clock &clock_;
    int borderWidth_ = 0;
    bool needShadow_ = true;
    bool resizeable_ = false;
    QQuickItem *titleBar_ = nullptr;
    std::set<QQuickItem *> ignored_;
    bool closing_ = false; // inside close()
};
