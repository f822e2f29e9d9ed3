#include "base/last_lines.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <mutex>

namespace last_lines {

namespace {

struct Line
{
    std::array<char, longest> text;
    std::size_t size;
};

std::array<Line, count> lines;
std::atomic<std::size_t> added{0};

} // namespace

void add(const char *text, std::size_t size)
{
    // Two logs may write at once. Whoever reads after a crash asks for no lock.
    static std::mutex writing;
    const std::lock_guard<std::mutex> lock(writing);
    const std::size_t place = added.load(std::memory_order_relaxed);
    Line &line = lines[place % count];
    line.size = std::min(size, longest);
    std::memcpy(line.text.data(), text, line.size);
    added.store(place + 1, std::memory_order_release);
}

void forEach(void (*use)(const char *text, std::size_t size, void *context), void *context)
{
    const std::size_t end = added.load(std::memory_order_acquire);
    for (std::size_t place = end > count ? end - count : 0; place < end; ++place) {
        const Line &line = lines[place % count];
        use(line.text.data(), std::min(line.size, longest), context);
    }
}

} // namespace last_lines
