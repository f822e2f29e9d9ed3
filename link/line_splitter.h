// Cuts a received byte stream into lines.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// A line ends with a line feed, which is not part of it; a carriage return is.
// A NUL ends the chunk it arrives in: the rest of that chunk is lost, the next
// chunk goes on where the line was.
//
// Time is linear in the bytes received, however they are cut into chunks and
// lines. One thread.
class LineSplitter
{
public:
    static constexpr std::size_t defaultLimit = 1048576;

    // `limit`: how long a line may become without an end, in bytes.
    explicit LineSplitter(std::size_t limit = defaultLimit) : limit_(limit) {}

    // Appends the lines that the chunk completes. False when the rest is longer
    // than the limit; what to do about it is the caller's business, more may be
    // appended until clear().
    [[nodiscard]] bool append(const char *chunk, std::size_t size, std::vector<std::string> *lines);

    // Forgets the unfinished line.
    void clear();

    // The unfinished line, until the next append(), and its length in bytes.
    std::string_view rest() const { return buffer_; }
    std::size_t unfinished() const { return buffer_.size(); }

private:
    std::size_t limit_;
    std::string buffer_; // the unfinished line; never holds a line feed
};
