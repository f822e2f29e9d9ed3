// A window that a test tells what the system would.
#pragma once

#include "simpc/window_frame_sim.h"
#include "ui/frameless_quick_window.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QCursor>

// Lets a test hand native messages to the window.
class Window : public FramelessQuickWindow
{
public:
    explicit Window(QWindow *parent = nullptr) : FramelessQuickWindow(parent) {}
    explicit Window(Clock &clock) : FramelessQuickWindow(clock) {}

    struct Answer
    {
        bool handled;
        long result;
    };

    Answer tell(window_frame::Message message)
    {
        long result = -1;
        const bool handled = nativeEvent(window_frame::sim::messageType, &message, &result);
        return {handled, result};
    }

    Answer tell(window_frame::Message::Kind kind)
    {
        window_frame::Message message;
        message.kind = kind;
        return tell(message);
    }

    // Asks what lies at a point of the window, in its own coordinates, with the
    // mouse there.
    Answer ask(const QPoint &point)
    {
        QCursor::setPos(mapToGlobal(point));
        return askWithoutMouse(point);
    }

    Answer askWithoutMouse(const QPoint &point)
    {
        window_frame::Message message;
        message.kind = window_frame::Message::Kind::HitTest;
        message.frame = {x(), y(), x() + width(), y() + height()};
        message.point = mapToGlobal(point);
        return tell(message);
    }
};

// Closes windows as the window manager does: by an event out of nowhere.
inline bool requestClose(QWindow &window)
{
    QCloseEvent event;
    QCoreApplication::sendEvent(&window, &event);
    return event.isAccepted();
}
