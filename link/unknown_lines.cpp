#include "link/unknown_lines.h"

#include <QDebug>

#include <algorithm>

bool UnknownLines::isNews(std::string_view name)
{
    const std::string_view kind = cut(name);
    const bool known = std::find(kinds_.begin(), kinds_.end(), kind) != kinds_.end();
    if (!known && kinds_.size() < mostKinds) {
        kinds_.emplace_back(kind);
        return true;
    }
    if (++leftOut_ == writeAt_) {
        writeCount();
        writeAt_ *= 1000;
    }
    return false;
}

void UnknownLines::nextClient()
{
    if (leftOut_ != written_)
        writeCount();
    *this = UnknownLines();
}

void UnknownLines::writeCount()
{
    written_ = leftOut_;
    qInfo("control port: %llu lines that mean nothing were left out here", leftOut_);
}
