// The last lines of the log, where also a broken process finds them.
#pragma once

#include <cstddef>

namespace last_lines {

constexpr std::size_t count = 40;
constexpr std::size_t longest = 240; // bytes; the rest of a line is not kept

// Keeps a line. By one thread at a time.
void add(const char *text, std::size_t size);

// Calls `use` for each kept line, the oldest first. Takes no lock and no memory, so
// that whoever reports a crash may call it: a line that is being added meanwhile may
// come mixed up.
void forEach(void (*use)(const char *text, std::size_t size, void *context), void *context);

} // namespace last_lines
