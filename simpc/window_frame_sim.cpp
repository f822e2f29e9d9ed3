#include "simpc/window_frame_sim.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QWindow>

#include <qpa/qwindowsysteminterface.h>

namespace window_frame {

namespace {

QStringList requests;

// Only the tests read this; a program that runs for days must not grow by it.
void note(const QString &request)
{
    constexpr int kept = 64;
    if (requests.size() == kept)
        requests.removeFirst();
    requests.append(request);
}

Qt::Edges edgesOf(hit_test::Code code)
{
    switch (code) {
    case hit_test::Left:
        return Qt::LeftEdge;
    case hit_test::Right:
        return Qt::RightEdge;
    case hit_test::Top:
        return Qt::TopEdge;
    case hit_test::TopLeft:
        return Qt::TopEdge | Qt::LeftEdge;
    case hit_test::TopRight:
        return Qt::TopEdge | Qt::RightEdge;
    case hit_test::Bottom:
        return Qt::BottomEdge;
    case hit_test::BottomLeft:
        return Qt::BottomEdge | Qt::LeftEdge;
    case hit_test::BottomRight:
        return Qt::BottomEdge | Qt::RightEdge;
    case hit_test::Caption:
    case hit_test::Undecided:
        break;
    }
    return {};
}

} // namespace

namespace sim {

const char messageType[] = "sim_window_message";

QStringList journal()
{
    return requests;
}

void clearJournal()
{
    requests.clear();
}

} // namespace sim

Message readMessage(const QByteArray &eventType, void *message)
{
    return eventType == sim::messageType ? *static_cast<Message *>(message) : Message();
}

void applyShadow(QWindow &window, bool needShadow)
{
    if (window.handle())
        note(needShadow ? QStringLiteral("shadow on") : QStringLiteral("shadow off"));
}

bool closeEventIsRequest()
{
    return true;
}

void forbidGhosts()
{
    note(QStringLiteral("no ghosts"));
}

void putInFront(QWindow &window)
{
    note(QStringLiteral("put in front"));
    // Without a screen there is no order of windows, and Qt complains.
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        window.raise();
}

void putOnScreen(QWindow &window)
{
    constexpr int longest = 200; // ms
    note(QStringLiteral("put on screen"));
    // What the window system has said, and nothing else that waits for the event loop.
    QWindowSystemInterface::flushWindowSystemEvents(QEventLoop::ExcludeUserInputEvents);
    QElapsedTimer waited;
    for (waited.start(); !window.isExposed() && waited.elapsed() < longest;) {
        QGuiApplication::processEvents(QEventLoop::ExcludeUserInputEvents |
                                       QEventLoop::ExcludeSocketNotifiers |
                                       QEventLoop::X11ExcludeTimers);
    }
}

void flush() {}

bool startDrag(QWindow &window, hit_test::Code code)
{
    if (code == hit_test::Undecided)
        return false;
    note(QStringLiteral("drag %1").arg(code));
    return code == hit_test::Caption ? window.startSystemMove()
                                     : window.startSystemResize(edgesOf(code));
}

} // namespace window_frame
