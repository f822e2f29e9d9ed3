#include "cloud/answer_reader.h"

#include <QList>

#include <algorithm>

namespace {

constexpr int longestChunkLine = 1000; // bytes

// A number as headers have it: digits alone. Below zero if it is none.
qint64 numberOf(const QByteArray &text, int base)
{
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    });
    bool ok = false;
    const qint64 number = text.toLongLong(&ok, base);
    return ok && isPlain ? number : -1;
}

} // namespace

QByteArray AnswerReader::feed(const QByteArray &bytes)
{
    QByteArray body;
    int at = 0;
    while (at < bytes.size() && (state_ == State::Head || state_ == State::Body)) {
        const bool isPart =
            expect_ == Expect::Counted || expect_ == Expect::Rest || expect_ == Expect::Chunk;
        if (isPart)
            takePart(bytes, &at, &body);
        else if (takeLine(bytes, &at))
            readLine();
    }
    return body;
}

void AnswerReader::end()
{
    if (state_ == State::Body && expect_ == Expect::Rest)
        state_ = State::Done;
    else if (state_ != State::Done)
        state_ = State::Broken;
}

// Whether `line_` is whole now.
bool AnswerReader::takeLine(const QByteArray &bytes, int *at)
{
    const bool isChunkLine = expect_ == Expect::ChunkSize || expect_ == Expect::ChunkEnd;
    const int room = isChunkLine ? longestChunkLine - line_.size() : longestHead - headSize_;
    const int found = bytes.indexOf('\n', *at);
    const int size = (found < 0 ? bytes.size() : found + 1) - *at;
    if (size > room) {
        state_ = State::Broken;
        return false;
    }
    line_.append(bytes.constData() + *at, size);
    *at += size;
    if (!isChunkLine)
        headSize_ += size;
    if (found < 0)
        return false;
    line_.chop(line_.endsWith("\r\n") ? 2 : 1);
    return true;
}

void AnswerReader::takePart(const QByteArray &bytes, int *at, QByteArray *body)
{
    qint64 size = bytes.size() - *at;
    if (expect_ != Expect::Rest)
        size = std::min(size, left_);
    body->append(bytes.constData() + *at, static_cast<int>(size));
    *at += static_cast<int>(size);
    left_ -= size;
    if (left_ > 0 || expect_ == Expect::Rest)
        return;
    if (expect_ == Expect::Counted)
        state_ = State::Done;
    else
        expect_ = Expect::ChunkEnd;
}

void AnswerReader::readLine()
{
    switch (expect_) {
    case Expect::Status:
        readStatus();
        break;
    case Expect::Header:
        if (line_.isEmpty())
            endHead();
        else
            readHeader();
        break;
    case Expect::ChunkSize:
        readChunkSize();
        break;
    case Expect::ChunkEnd:
        if (!line_.isEmpty())
            state_ = State::Broken;
        expect_ = Expect::ChunkSize;
        break;
    default: // of the trailer nothing is wanted
        if (line_.isEmpty())
            state_ = State::Done;
    }
    line_.clear();
}

void AnswerReader::readStatus()
{
    const int blank = line_.indexOf(' ');
    const qint64 status = numberOf(line_.mid(blank + 1, 3), 10);
    const QByteArray behind = line_.mid(blank + 4, 1);
    if (!line_.startsWith("HTTP/1.") || blank < 0 || status < 100 ||
        (!behind.isEmpty() && behind != " ")) {
        state_ = State::Broken;
        return;
    }
    status_ = static_cast<int>(status);
    reason_ = line_.mid(blank + 5);
    expect_ = Expect::Header;
}

void AnswerReader::readHeader()
{
    const int colon = line_.indexOf(':');
    const QByteArray name = line_.left(colon).trimmed().toLower();
    const QByteArray value = line_.mid(colon + 1).trimmed();
    if (colon < 0)
        return;
    if (name == "content-length") {
        const qint64 length = numberOf(value, 10);
        if (length < 0 || (length_ >= 0 && length != length_))
            state_ = State::Broken;
        length_ = length;
    } else if (name == "transfer-encoding") {
        isChunked_ = value.toLower() == "chunked";
        if (!isChunked_)
            state_ = State::Broken;
    }
}

void AnswerReader::endHead()
{
    const bool isInterim = status_ < 200;
    if (isInterim) { // the answer itself is still to come
        expect_ = Expect::Status;
        length_ = -1;
        isChunked_ = false;
        return;
    }
    if (status_ == 204 || status_ == 304) {
        length_ = 0;
        isChunked_ = false;
    } else if (isChunked_) {
        length_ = -1;
    }
    left_ = length_;
    state_ = length_ == 0 ? State::Done : State::Body;
    expect_ = isChunked_ ? Expect::ChunkSize : length_ > 0 ? Expect::Counted : Expect::Rest;
}

void AnswerReader::readChunkSize()
{
    left_ = numberOf(line_.split(';').first().trimmed(), 16);
    if (left_ < 0)
        state_ = State::Broken;
    expect_ = left_ == 0 ? Expect::Trailer : Expect::Chunk;
}
