// What is written of lines that mean nothing.
#pragma once

#include <QtGlobal>

#include <string>
#include <string_view>
#include <vector>

// Anybody on this PC may send any number of them, and the log is to be neither
// filled nor made useless by that. Of one client the first of a kind is written,
// and few kinds; all others are counted. A kind is what stands in front of the TAB.
//
// One thread.
class UnknownLines
{
public:
    // So many kinds of one client are written, and so many bytes of each part.
    static constexpr std::size_t mostKinds = 8;
    static constexpr std::size_t longestText = 48;

    // Counts the line. Whether it is to be written; if not, the count may be, which
    // is done here: whenever it has grown a thousandfold.
    [[nodiscard]] bool isNews(std::string_view name);

    // What is written of a part of such a line.
    static std::string_view cut(std::string_view text) { return text.substr(0, longestText); }

    // The next line is of another client. Writes how many of the one before were
    // left out.
    void nextClient();

private:
    void writeCount();

    std::vector<std::string> kinds_; // as they were cut
    quint64 leftOut_ = 0;
    quint64 written_ = 0; // how many were left out, as it was written last
    quint64 writeAt_ = 1000;
};
