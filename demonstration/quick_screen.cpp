#include "demonstration/quick_screen.h"

#include "demonstration/pictures.h"
#include "demonstration/window_order.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QKeySequence>
#include <QQuickItem>
#include <QQuickWindow>
#include <QUrl>

#include <algorithm>

// Qt's own way to bring events in as the system does; its test library uses it.
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow *window, const QPointF &local, const QPointF &global,
                                      Qt::MouseButtons state, Qt::MouseButton button,
                                      QEvent::Type type, Qt::KeyboardModifiers modifiers,
                                      int timestamp);
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow *window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString &text,
                                    bool repeated, ushort count);

namespace {

Reply noKeyboard()
{
    return Reply::cannot(QStringLiteral("no window has the keyboard"));
}

void findShown(QQuickItem *root, const QString &name, QList<QQuickItem *> *found)
{
    if (!root->isVisible())
        return;
    if (root->objectName() == name)
        found->append(root);
    const QList<QQuickItem *> children = root->childItems();
    for (QQuickItem *child : children)
        findShown(child, name, found);
}

QPointF middleInWindow(const QQuickItem *item)
{
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
}

void pressAndRelease(QWindow *window, int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        qt_handleKeyEvent(window, type, key, modifiers, text, false, 1);
}

} // namespace

QuickScreen::QuickScreen(QQuickWindow &main)
    : main_(main), frames_(std::make_shared<std::atomic<int>>(0))
{
    // The window may outlive this object, and this object the window.
    QObject::connect(
        &main_, &QQuickWindow::frameSwapped, &main_, [frames = frames_] { ++*frames; },
        Qt::DirectConnection);
}

// The one behind first.
QList<QQuickWindow *> QuickScreen::shownWindows() const
{
    QList<QQuickWindow *> found;
    const QWindowList all = QGuiApplication::topLevelWindows();
    for (QWindow *window : all) {
        auto *quick = qobject_cast<QQuickWindow *>(window);
        if (!quick || !quick->isVisible() || quick == &main_)
            continue;
        // Where no screen has an order of its own, a toast is above everything.
        if (quick->flags() & Qt::WindowDoesNotAcceptFocus)
            found.append(quick);
        else
            found.prepend(quick);
    }
    if (main_.isVisible())
        found.prepend(&main_);
    return window_order::fromBehind(found);
}

QQuickItem *QuickScreen::find(const ItemName &item) const
{
    const QList<QQuickWindow *> windows = shownWindows();
    QList<QQuickItem *> found;
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        QList<QQuickItem *> here;
        findShown((*window)->contentItem(), item.name, &here);
        std::sort(here.begin(), here.end(), [](const QQuickItem *a, const QQuickItem *b) {
            return middleInWindow(a).y() < middleInWindow(b).y();
        });
        found += here;
    }
    return found.value(item.number - 1);
}

std::optional<QPoint> QuickScreen::middleOf(const ItemName &item) const
{
    const QQuickItem *found = find(item);
    if (!found)
        return std::nullopt;
    return found->window()->mapToGlobal(middleInWindow(found).toPoint());
}

QString QuickScreen::dialog() const
{
    const QObject *place = main_.findChild<QObject *>(QStringLiteral("subWin"));
    const auto *dialog =
        place ? qobject_cast<QWindow *>(place->property("item").value<QObject *>()) : nullptr;
    if (!dialog || !dialog->isVisible())
        return {};
    return QFileInfo(place->property("source").toUrl().path()).baseName();
}

std::optional<bool> QuickScreen::toast() const
{
    const auto *toast = main_.findChild<QWindow *>(QStringLiteral("toast"));
    if (!toast)
        return std::nullopt;
    return toast->isVisible();
}

bool QuickScreen::isComplete() const
{
    const QList<QQuickWindow *> windows = shownWindows();
    return std::all_of(windows.begin(), windows.end(),
                       [](const QQuickWindow *window) { return window->isExposed(); });
}

bool QuickScreen::click(const ItemName &item)
{
    const QQuickItem *found = find(item);
    if (!found)
        return false;
    const QPointF local = middleInWindow(found);
    QQuickWindow *window = found->window();
    const QPoint global = window->mapToGlobal(local.toPoint());
    qt_handleMouseEvent(window, local, global, Qt::NoButton, Qt::NoButton, QEvent::MouseMove,
                        Qt::NoModifier, 0);
    qt_handleMouseEvent(window, local, global, Qt::LeftButton, Qt::LeftButton,
                        QEvent::MouseButtonPress, Qt::NoModifier, 0);
    qt_handleMouseEvent(window, local, global, Qt::NoButton, Qt::LeftButton,
                        QEvent::MouseButtonRelease, Qt::NoModifier, 0);
    return true;
}

Reply QuickScreen::pressKeys(const QString &keys)
{
    const QKeySequence sequence(keys);
    if (sequence.isEmpty() || sequence[0] == Qt::Key_unknown)
        return Reply::cannot(QStringLiteral("there is no such key"));
    QWindow *window = QGuiApplication::focusWindow();
    if (!window)
        return noKeyboard();
    pressAndRelease(window, sequence[0] & ~int(Qt::KeyboardModifierMask),
                    Qt::KeyboardModifiers(sequence[0] & int(Qt::KeyboardModifierMask)), QString());
    return {};
}

Reply QuickScreen::typeText(const QString &text)
{
    QWindow *window = QGuiApplication::focusWindow();
    if (!window)
        return noKeyboard();
    for (const QChar letter : text)
        pressAndRelease(window, Qt::Key_unknown, Qt::NoModifier, letter);
    return {};
}

Reply QuickScreen::takePicture(const QString &path)
{
    const QList<QQuickWindow *> windows = shownWindows();
    if (windows.isEmpty())
        return Reply::cannot(QStringLiteral("no window is shown"));
    if (!pictures::together(windows).save(path))
        return Reply::cannot(QStringLiteral("it cannot be saved"));
    return {};
}

void QuickScreen::activate()
{
    main_.requestActivate();
}

void QuickScreen::minimise()
{
    main_.showMinimized();
}

void QuickScreen::hide()
{
    main_.hide();
}

void QuickScreen::show()
{
    main_.showNormal();
}

int QuickScreen::framesDrawn()
{
    return frames_->exchange(0);
}
