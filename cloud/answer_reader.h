// Taking an HTTP answer apart as it comes in.
#pragma once

#include <QByteArray>

// One answer to one request, fed piece by piece. Holds no more than one line of
// it: neither a head nor a chunk without an end fills the memory. Any thread.
class AnswerReader
{
public:
    // All heads of an answer together, and what follows the last chunk.
    static constexpr int longestHead = 1 << 16; // bytes

    enum class State {
        Head,
        Body,
        Done,
        Broken // what came is no answer, or breaks off
    };

    // Returns what of `bytes` belongs to the body, unpacked from its chunks.
    QByteArray feed(const QByteArray &bytes);
    // Nothing more will come.
    void end();

    State state() const { return state_; }
    // From State::Body on.
    int status() const { return status_; }
    QByteArray reason() const { return reason_; }
    qint64 length() const { return length_; } // of the body; -1: not known

private:
    enum class Expect { Status, Header, Counted, Rest, ChunkSize, Chunk, ChunkEnd, Trailer };

    bool takeLine(const QByteArray &bytes, int *at);
    void takePart(const QByteArray &bytes, int *at, QByteArray *body);
    void readLine();
    void readStatus();
    void readHeader();
    void endHead();
    void readChunkSize();

    State state_ = State::Head;
    Expect expect_ = Expect::Status;
    QByteArray line_; // as much of it as there is
    int headSize_ = 0;
    int status_ = 0;
    QByteArray reason_;
    qint64 length_ = -1;
    bool isChunked_ = false;
    qint64 left_ = 0; // of the body, or of the chunk
};
