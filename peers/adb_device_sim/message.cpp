#include "peers/adb_device_sim/message.h"

#include <QtEndian>

#include <numeric>

namespace {

constexpr int headerSize = 24;
constexpr quint32 longestPayload = 1024 * 1024;

quint32 sum(const QByteArray &payload)
{
    return std::accumulate(payload.begin(), payload.end(), quint32(0), [](quint32 total, char c) {
        return total + static_cast<unsigned char>(c);
    });
}

quint32 word(const QByteArray &bytes, int index)
{
    return qFromLittleEndian<quint32>(bytes.constData() + index * 4);
}

} // namespace

QByteArray Message::bytes() const
{
    const quint32 words[] = {command,      first,   second, static_cast<quint32>(payload.size()),
                             sum(payload), ~command};
    QByteArray bytes(headerSize, '\0');
    for (int i = 0; i < 6; ++i)
        qToLittleEndian(words[i], bytes.data() + i * 4);
    return bytes + payload;
}

std::optional<Message> MessageReader::next()
{
    if (broken_ || buffer_.size() < headerSize)
        return std::nullopt;
    const quint32 size = word(buffer_, 3);
    if (word(buffer_, 5) != ~word(buffer_, 0) || size > longestPayload) {
        broken_ = true;
        return std::nullopt;
    }
    const int whole = headerSize + static_cast<int>(size);
    if (buffer_.size() < whole)
        return std::nullopt;
    const Message message = {word(buffer_, 0), word(buffer_, 1), word(buffer_, 2),
                             buffer_.mid(headerSize, static_cast<int>(size))};
    buffer_.remove(0, whole);
    return message;
}
