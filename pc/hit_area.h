// What a system and a window without a frame tell each other in a hit test.
// Physical pixels.
#pragma once

namespace hit_test {

// The system's own numbers, which is what its hit test message wants back.
enum Code {
    Undecided = 0,
    Caption = 2,
    Left = 10,
    Right = 11,
    Top = 12,
    TopLeft = 13,
    TopRight = 14,
    Bottom = 15,
    BottomLeft = 16,
    BottomRight = 17,
};

// A rectangle on the screen; right and bottom lie just outside of it.
struct Frame
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

} // namespace hit_test
