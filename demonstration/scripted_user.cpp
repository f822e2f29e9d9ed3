#include "demonstration/scripted_user.h"

#include "base/clock.h"
#include "base/console.h"
#include "controller/connection_road.h"
#include "demonstration/exit_codes.h"
#include "demonstration/pictures.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeySequence>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSocketNotifier>
#include <QUrl>

#include <algorithm>

#include <unistd.h>

// Qt's own way to bring events in as the system does; its test library uses it.
Q_GUI_EXPORT void qt_handleMouseEvent(QWindow *window, const QPointF &local, const QPointF &global,
                                      Qt::MouseButtons state, Qt::MouseButton button,
                                      QEvent::Type type, Qt::KeyboardModifiers modifiers,
                                      int timestamp);
Q_GUI_EXPORT void qt_handleKeyEvent(QWindow *window, QEvent::Type type, int key,
                                    Qt::KeyboardModifiers modifiers, const QString &text,
                                    bool repeated, ushort count);

namespace {

constexpr int askAgain = 50;        // ms
constexpr int longestWait = 120000; // ms for a condition

// The windows that are seen, the one behind first.
QList<QQuickWindow *> shownWindows(QQuickWindow *main)
{
    QList<QQuickWindow *> found;
    const QWindowList all = QGuiApplication::topLevelWindows();
    for (QWindow *window : all) {
        auto *quick = qobject_cast<QQuickWindow *>(window);
        if (!quick || !quick->isVisible() || quick == main)
            continue;
        // A toast is above everything.
        if (quick->flags() & Qt::WindowDoesNotAcceptFocus)
            found.append(quick);
        else
            found.prepend(quick);
    }
    if (main->isVisible())
        found.prepend(main);
    return found;
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

QPointF middleOf(const QQuickItem *item)
{
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
}

} // namespace

ScriptedUser::ScriptedUser(Clock &clock, QQuickWindow &window, const ConnectionRoad *road,
                           QObject *parent)
    : QObject(parent), clock_(clock), window_(window), road_(road)
{
    connect(
        &window_, &QQuickWindow::frameSwapped, this, [this] { ++frames_; }, Qt::DirectConnection);
    notifier_ = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &ScriptedUser::readLines);
}

void ScriptedUser::stop()
{
    delete notifier_;
    notifier_ = nullptr;
    lines_.clear();
}

void ScriptedUser::readLines()
{
    char bytes[4096];
    const ssize_t count = read(STDIN_FILENO, bytes, sizeof bytes);
    if (count <= 0)
        notifier_->setEnabled(false);
    else
        input_.append(bytes, static_cast<int>(count));
    for (int end = input_.indexOf('\n'); end >= 0; end = input_.indexOf('\n')) {
        const QString line = QString::fromUtf8(input_.left(end)).trimmed();
        input_.remove(0, end + 1);
        if (!line.isEmpty() && !line.startsWith('#'))
            lines_.enqueue(line);
    }
    if (!busy_)
        next();
}

void ScriptedUser::next()
{
    busy_ = !lines_.isEmpty();
    if (busy_)
        carryOut(lines_.dequeue());
}

void ScriptedUser::carryOut(const QString &line)
{
    const QStringList words = line.split(' ', Qt::SkipEmptyParts);
    const QString verb = words.first();
    line_ = line;
    if (verb == QLatin1String("wait")) {
        clock_.singleShot(static_cast<int>(words.value(1).toDouble() * 1000), this,
                          [this] { answer(QStringLiteral("ok")); });
    } else if (verb == QLatin1String("until")) {
        const std::function<bool()> isSo = condition(words.mid(1));
        if (isSo)
            await(isSo);
        else
            fail(line, QStringLiteral("there is no such condition"));
    } else if (verb == QLatin1String("close")) {
        answer(QStringLiteral("ok"));
        emit closeRequested();
    } else if (verb == QLatin1String("picture")) {
        // A window that is shown but not on the screen yet has nothing to show.
        await([this] {
            const QList<QQuickWindow *> windows = shownWindows(&window_);
            return std::all_of(windows.begin(), windows.end(),
                               [](const QQuickWindow *window) { return window->isExposed(); });
        });
    } else {
        doNow();
    }
}

void ScriptedUser::await(std::function<bool()> isSo)
{
    awaited_ = std::move(isSo);
    askingSince_ = clock_.elapsed();
    ask();
}

void ScriptedUser::doNow()
{
    const QString said = act(line_.section(' ', 0, 0), line_.section(' ', 1));
    if (said.startsWith('!')) {
        fail(line_, said.mid(1));
        return;
    }
    // What it caused has happened before the next line.
    clock_.singleShot(askAgain, this,
                      [this, said] { answer(said.isEmpty() ? QStringLiteral("ok") : said); });
}

void ScriptedUser::ask()
{
    if (awaited_())
        doNow();
    else if (clock_.elapsed() - askingSince_ > longestWait)
        fail(line_, QStringLiteral("that did not happen"));
    else
        clock_.singleShot(askAgain, this, [this] { ask(); });
}

void ScriptedUser::answer(const QString &text)
{
    console::echo("directed: " + text.toStdString());
    next();
}

void ScriptedUser::fail(const QString &line, const QString &reason)
{
    console::echo("directed: failed: " + line.toStdString() + ": " + reason.toStdString());
    lines_.clear();
    busy_ = false;
    result_ = exit_code::badLine;
    emit closeRequested();
}

// What it answers, "" for nothing special; with a "!" in front why it cannot.
QString ScriptedUser::act(const QString &verb, const QString &rest)
{
    if (verb == QLatin1String("until"))
        return {};
    if (verb == QLatin1String("click") || verb == QLatin1String("where"))
        return point(rest, verb == QLatin1String("click"));
    if (verb == QLatin1String("key"))
        return pressKey(rest);
    if (verb == QLatin1String("type")) {
        type(rest);
        return {};
    }
    if (verb == QLatin1String("picture"))
        return picture(rest);
    if (verb == QLatin1String("frames"))
        return QStringLiteral("frames %1").arg(frames_.exchange(0));
    if (verb == QLatin1String("minimise"))
        window_.showMinimized();
    else if (verb == QLatin1String("activate"))
        window_.requestActivate();
    else if (verb == QLatin1String("hide"))
        window_.hide();
    else if (verb == QLatin1String("show"))
        window_.showNormal();
    else
        return QStringLiteral("!there is no such word");
    return {};
}

// Empty when the words make no sense.
std::function<bool()> ScriptedUser::condition(const QStringList &words) const
{
    const QString what = words.value(0);
    const QString name = words.value(1);
    if (what == QLatin1String("shown") || what == QLatin1String("hidden")) {
        const bool shown = what == QLatin1String("shown");
        return [this, name, shown] { return (find(name) != nullptr) == shown; };
    }
    if (what == QLatin1String("dialog") || what == QLatin1String("nodialog")) {
        return [this, name] {
            const QObject *place = window_.findChild<QObject *>(QStringLiteral("subWin"));
            const auto *dialog =
                place ? qobject_cast<QWindow *>(place->property("item").value<QObject *>())
                      : nullptr;
            const bool shown = dialog && dialog->isVisible();
            return name == (shown ? QFileInfo(place->property("source").toUrl().path()).baseName()
                                  : QString());
        };
    }
    if (what == QLatin1String("toast")) {
        return [this, name] {
            const auto *toast = window_.findChild<QWindow *>(QStringLiteral("toast"));
            return toast && toast->isVisible() != (name == QLatin1String("gone"));
        };
    }
    static const QStringList stages = {QStringLiteral("steam"), QStringLiteral("steamvr"),
                                       QStringLiteral("server"), QStringLiteral("headset"),
                                       QStringLiteral("linked")};
    const int stage = stages.indexOf(what);
    if (stage >= 0 && road_)
        return [this, stage] { return road_->reached(static_cast<ConnectionRoad::Stage>(stage)); };
    return {};
}

// "name" or "name 2" for the second one of that name from above. The window in
// front comes first.
QQuickItem *ScriptedUser::find(const QString &name) const
{
    const int index = qMax(name.section(' ', 1).toInt() - 1, 0);
    const QList<QQuickWindow *> windows = shownWindows(&window_);
    QList<QQuickItem *> found;
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        QList<QQuickItem *> here;
        findShown((*window)->contentItem(), name.section(' ', 0, 0), &here);
        std::sort(here.begin(), here.end(), [](const QQuickItem *a, const QQuickItem *b) {
            return middleOf(a).y() < middleOf(b).y();
        });
        found += here;
    }
    return found.value(index);
}

QString ScriptedUser::point(const QString &name, bool click)
{
    const QQuickItem *item = find(name);
    if (!item)
        return QStringLiteral("!nothing of that name is shown");
    const QPointF local = middleOf(item);
    QQuickWindow *window = item->window();
    const QPoint global = window->mapToGlobal(local.toPoint());
    if (!click)
        return QStringLiteral("at %1 %2").arg(global.x()).arg(global.y());
    qt_handleMouseEvent(window, local, global, Qt::NoButton, Qt::NoButton, QEvent::MouseMove,
                        Qt::NoModifier, 0);
    qt_handleMouseEvent(window, local, global, Qt::LeftButton, Qt::LeftButton,
                        QEvent::MouseButtonPress, Qt::NoModifier, 0);
    qt_handleMouseEvent(window, local, global, Qt::NoButton, Qt::LeftButton,
                        QEvent::MouseButtonRelease, Qt::NoModifier, 0);
    return {};
}

QString ScriptedUser::pressKey(const QString &name)
{
    const QKeySequence keys(name);
    QWindow *window = QGuiApplication::focusWindow();
    if (keys.isEmpty() || keys[0] == Qt::Key_unknown)
        return QStringLiteral("!there is no such key");
    if (!window)
        return QStringLiteral("!no window has the keyboard");
    const int key = keys[0] & ~int(Qt::KeyboardModifierMask);
    const auto modifiers = Qt::KeyboardModifiers(keys[0] & int(Qt::KeyboardModifierMask));
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
        qt_handleKeyEvent(window, type, key, modifiers, QString(), false, 1);
    return {};
}

void ScriptedUser::type(const QString &text)
{
    QWindow *window = QGuiApplication::focusWindow();
    for (const QChar letter : text) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
            qt_handleKeyEvent(window, type, Qt::Key_unknown, Qt::NoModifier, letter, false, 1);
    }
}

QString ScriptedUser::picture(const QString &path)
{
    const QList<QQuickWindow *> windows = shownWindows(&window_);
    if (windows.isEmpty())
        return QStringLiteral("!no window is shown");
    return pictures::together(windows).save(path) ? QString()
                                                  : QStringLiteral("!it cannot be saved");
}
