// The window manager of systems that ask no hit tests, and of the tests.
#pragma once

#include "pc/window_frame.h"

#include <QList>
#include <QStringList>

namespace window_frame::sim {

// Event type under which readMessage() takes its argument for a Message.
extern const char messageType[];

// What windows asked of the window manager, in order, since the last clear:
// "shadow on", "shadow off", "no ghosts", "put in front", "put on screen",
// "drag <code>".
QStringList journal();
void clearJournal();

} // namespace window_frame::sim
