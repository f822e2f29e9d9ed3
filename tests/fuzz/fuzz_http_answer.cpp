// An answer of the cloud, or of whoever stands in its place: bytes that arrive in
// pieces of any size. The first two bytes say how they are cut.
#include "cloud/answer_reader.h"
#include "tests/fuzz/require.h"

#include <cstddef>
#include <cstdint>

namespace {

struct Reading
{
    AnswerReader reader;
    QByteArray body;
};

using State = AnswerReader::State;

bool isOver(const Reading &reading)
{
    return reading.reader.state() == State::Done || reading.reader.state() == State::Broken;
}

void feed(Reading &reading, const QByteArray &bytes)
{
    const QByteArray part = reading.reader.feed(bytes);
    // Nothing is made up.
    REQUIRE(part.size() <= bytes.size());
    // There is no body before the end of the head.
    REQUIRE(part.isEmpty() || reading.reader.status() >= 200);
    reading.body += part;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 2)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data + 2), static_cast<int>(size - 2));
    const int pieces[] = {data[0] % 16 + 1, data[1] % 64 + 1};

    Reading whole;
    feed(whole, bytes);
    Reading cut;
    for (int at = 0, number = 0; at < bytes.size(); ++number) {
        const int length = pieces[number % 2];
        const bool was = isOver(cut);
        const QByteArray before = cut.body;
        feed(cut, bytes.mid(at, length));
        REQUIRE(!was || (isOver(cut) && cut.body == before)); // an end is one
        at += length;
    }
    whole.reader.end();
    cut.reader.end();

    // Where it is cut is nothing to the answer.
    REQUIRE(whole.reader.state() == cut.reader.state());
    REQUIRE(whole.reader.status() == cut.reader.status());
    REQUIRE(whole.reader.reason() == cut.reader.reason());
    REQUIRE(whole.reader.length() == cut.reader.length());
    REQUIRE(whole.body == cut.body);
    REQUIRE(isOver(whole));
    REQUIRE(whole.reader.state() != State::Done || whole.reader.status() >= 200);
    // As long as it was said to be.
    if (whole.reader.state() == State::Done && whole.reader.length() >= 0)
        REQUIRE(whole.body.size() == whole.reader.length());
    return 0;
}
