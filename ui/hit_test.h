// Where a point of a frameless window lies: what the system would have known
// if it drew the frame itself. Pure functions, physical pixels, any thread.
#pragma once

#include "pc/hit_area.h"

#include <QPoint>
#include <QSize>

namespace hit_test {

// How a window may be resized by its edges.
struct Resizing
{
    bool enabled = false;
    int band = 0; // width of the strip along each edge that resizes
    QSize minimum;
    QSize maximum; // a direction with equal minimum and maximum is fixed
};

// The edge or corner that `point` lies on, else Undecided. Where strips
// overlap, corners win over top and bottom, and these over left and right.
Code edgeAt(const Frame &frame, const Resizing &resizing, const QPoint &point);

// What lies at a point as far as the title bar goes.
enum class TitleBarSpot {
    Outside, // not on the title bar, or there is none
    Bare,    // on the bar itself
    Label,   // on a child that only shows something
    Control, // on a child that wants the mouse
};

// Caption where the user may drag the window, else Undecided: the point
// belongs to the window's content.
Code captionAt(TitleBarSpot spot);

} // namespace hit_test
