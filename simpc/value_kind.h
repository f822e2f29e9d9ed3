// The kinds of values that a scenario file has: how each is read, and how
// people read it.
#pragma once

#include "simpc/object_reader.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

template <typename T>
struct ValueKind
{
    QString type;
    // The value under a key that is there; what is wrong with it goes to the
    // reader's error.
    std::function<T(ObjectReader &reader, const QString &key)> read;
    // For events, and for defaults.
    std::function<QString(const T &value)> text;
    QString details = {}; // what else is to be said about it, empty if nothing
};

namespace kinds {

ValueKind<bool> flag();
ValueKind<QString> text();
ValueKind<QString> textNotEmpty(); // for keys that must be there
ValueKind<QStringList> texts();
// Seconds in the file, milliseconds here; below 0: never, which only the second
// can say.
ValueKind<int> time();
ValueKind<int> timeOrNever();

// From `least` up; a value below it means that there is none.
template <typename T>
ValueKind<T> wholeNumber(qint64 least = 0)
{
    return {QStringLiteral("whole number"),
            [least](ObjectReader &reader, const QString &key) {
                return static_cast<T>(reader.number(key, least, 0));
            },
            [least](const T &value) {
                return static_cast<qint64>(value) < least ? QStringLiteral("off")
                                                          : QString::number(value);
            }};
}

// "`a`, `b` or `c`"
QString oneOf(const QStringList &words);

// Words that stand for values.
template <typename T>
using Words = std::vector<std::pair<QString, T>>;

template <typename T, typename Same = std::equal_to<T>>
ValueKind<T> word(const Words<T> &words, Same same = {})
{
    QStringList all;
    for (const auto &entry : words)
        all.append(entry.first);
    return {oneOf(all),
            [words, all](ObjectReader &reader, const QString &key) {
                const int place = reader.choice(key, all, 0);
                return words[static_cast<size_t>(place < 0 ? 0 : place)].second;
            },
            [words, same](const T &value) {
                for (const auto &entry : words) {
                    if (same(entry.second, value))
                        return entry.first;
                }
                return QString();
            }};
}

// What is joined by commas, "none" if there is nothing.
QString listText(const QStringList &entries);

} // namespace kinds
