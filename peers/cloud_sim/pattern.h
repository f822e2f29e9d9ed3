// The bytes of a large body, so that whoever gets it can tell whether it is
// whole.
#pragma once

#include <QByteArray>

inline QByteArray pattern(qint64 from, qint64 size)
{
    QByteArray bytes(static_cast<int>(size), Qt::Uninitialized);
    char *const data = bytes.data();
    for (qint64 i = 0; i < size; ++i) {
        const auto at = static_cast<quint64>(from + i);
        // Differs from one kilobyte to the next, so that a lost piece shows.
        data[i] = static_cast<char>((at * 7 + (at >> 10) * 13 + (at >> 20)) & 0xff);
    }
    return bytes;
}
