#include "link/line_splitter.h"

#include <cstring>

bool LineSplitter::append(const char *chunk, std::size_t size, std::vector<std::string> *lines)
{
    const auto find = [](const char *from, const char *to, char byte) {
        const void *found = std::memchr(from, byte, static_cast<std::size_t>(to - from));
        return found ? static_cast<const char *>(found) : to;
    };

    const char *at = chunk;
    const char *const end = find(chunk, chunk + size, '\0');
    // The buffer is known to hold no line feed: only new bytes are looked at.
    for (const char *feed; (feed = find(at, end, '\n')) != end; at = feed + 1) {
        buffer_.append(at, feed);
        lines->push_back(std::move(buffer_));
        buffer_.clear();
    }
    buffer_.append(at, end);
    return buffer_.size() <= limit_;
}

void LineSplitter::clear()
{
    buffer_ = std::string();
}
