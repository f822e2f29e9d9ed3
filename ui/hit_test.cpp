#include "ui/hit_test.h"

namespace hit_test {

Code edgeAt(const Frame &frame, const Resizing &resizing, const QPoint &point)
{
    if (!resizing.enabled)
        return Undecided;

    const bool width = resizing.minimum.width() != resizing.maximum.width();
    const bool height = resizing.minimum.height() != resizing.maximum.height();
    const bool left = point.x() >= frame.left && point.x() < frame.left + resizing.band;
    const bool right = point.x() >= frame.right - resizing.band && point.x() < frame.right;
    const bool top = point.y() >= frame.top && point.y() < frame.top + resizing.band;
    const bool bottom = point.y() >= frame.bottom - resizing.band && point.y() < frame.bottom;

    // Each later match overwrites an earlier one: in a window smaller than two
    // bands the strips overlap, and the order then decides.
    Code code = Undecided;
    if (width && left)
        code = Left;
    if (width && right)
        code = Right;
    if (height && bottom)
        code = Bottom;
    if (height && top)
        code = Top;
    if (width && height) {
        if (bottom && left)
            code = BottomLeft;
        if (bottom && right)
            code = BottomRight;
        if (top && left)
            code = TopLeft;
        if (top && right)
            code = TopRight;
    }
    return code;
}

Code captionAt(TitleBarSpot spot)
{
    switch (spot) {
    case TitleBarSpot::Bare:
    case TitleBarSpot::Label:
        return Caption;
    case TitleBarSpot::Outside:
    case TitleBarSpot::Control:
        break;
    }
    return Undecided;
}

} // namespace hit_test
