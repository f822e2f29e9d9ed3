// Answers of the system whose size is not known beforehand and may have grown by
// the time they are asked for again.
#pragma once

#include <cstdint>

enum class Fit {
    Fits,     // the answer is there
    TooSmall, // there was no room for it; the size that it needed is known
    Refused   // it cannot be had
};

// Calls `ask` with a pointer to the size of the room for the answer, in bytes,
// `size` at first, until it does not say that this was too small; after
// `attempts` calls at most, and then it stays too small. `ask` makes the room, and
// puts the size that it lacked behind the pointer.
template <typename Ask>
Fit askUntilItFits(std::uint32_t size, int attempts, Ask ask)
{
    Fit fit = Fit::TooSmall;
    for (int attempt = 0; fit == Fit::TooSmall && attempt < attempts; ++attempt)
        fit = ask(&size);
    return fit;
}
