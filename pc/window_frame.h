// What a window without a frame needs of the system's window manager: to be
// asked where its caption and edges are, to be told that it shall close, and
// to keep its shadow. GUI thread only.
#pragma once

#include "pc/hit_area.h"

#include <QByteArray>
#include <QPoint>

class QWindow;

namespace window_frame {

// A native message as far as a frameless window cares.
struct Message
{
    enum class Kind {
        Other,
        HitTest,       // which part of the frame is at `point`?
        CloseRequest,  // the user asks to close: system menu or keyboard
        FrameMayReset, // shown, minimised, restored: the shadow may be lost
    };
    Kind kind = Kind::Other;
    hit_test::Frame frame; // HitTest: the window on the screen, physical pixels
    QPoint point;          // HitTest: where, on the screen, physical pixels
};

// Reads what the native event hook of a window received. Systems whose window
// manager does not ask such things answer Other to everything.
Message readMessage(const QByteArray &eventType, void *message);

// Keeps (or drops) the system's shadow of the window and its entry for
// minimising. Does nothing before the window exists for the system.
void applyShadow(QWindow &window, bool needShadow);

// True where the user's request to close arrives as a close event rather than
// as a message of its own.
bool closeEventIsRequest();

// The windows of this process stay as they are on the screen when it does not
// answer for seconds; else the system puts pictures of them in their place, with
// an offer to end the program. Cannot be taken back.
void forbidGhosts();

// Puts the window above the program's others, without taking the focus from
// them.
void putInFront(QWindow &window);

// Brings a window that was just shown onto the screen before anything else
// happens, for when the GUI thread will be busy. Where the window system can
// only tell that later, other events (but no input) may be handled meanwhile.
void putOnScreen(QWindow &window);

// Has the system show what this thread has drawn; it may keep that until the thread
// looks for messages.
void flush();

// Moves or resizes the window along with the mouse from now until the button
// is released; `code` says by which part. False where the system begins that by
// itself after its hit test, or cannot do it.
bool startDrag(QWindow &window, hit_test::Code code);

} // namespace window_frame
