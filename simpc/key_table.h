// The keys that an object of a scenario file may have, as a table: what reads
// them and what the README says of them are the same rows.
#pragma once

#include "simpc/object_reader.h"
#include "simpc/value_kind.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <utility>
#include <vector>

// What people are told about a key.
struct KeyRow
{
    QString key;
    QString type;
    QString otherwise; // what holds without the key
    QString meaning;
    bool changes = false; // also a key of `at`
};

using KeyRows = std::vector<KeyRow>;

template <typename T>
KeyRow keyRow(const char *key, const ValueKind<T> &kind, const T &otherwise, const char *meaning)
{
    const QString about = QString::fromUtf8(meaning);
    const QString join = about.isEmpty() || kind.details.isEmpty() ? QString() : ": ";
    return {QString::fromUtf8(key), kind.type, kind.text(otherwise), about + join + kind.details};
}

// "`a` (text, none), `b` (whole number, 1)", for objects inside a list.
QString inlineText(const KeyRows &rows);

// The keys of objects that become an S.
template <typename S>
class KeyTable
{
public:
    // `prototype` holds what each key is without being mentioned.
    explicit KeyTable(S prototype = {}) : prototype_(std::move(prototype)) {}

    template <typename T>
    KeyTable &key(const char *name, T S::*member, const ValueKind<T> &kind, const char *meaning)
    {
        return key(keyRow(name, kind, prototype_.*member, meaning),
                   [name = QString::fromUtf8(name), member, kind](ObjectReader &reader, S *value) {
                       if (reader.has(name))
                           value->*member = kind.read(reader, name);
                   });
    }
    // One without which the object is worth nothing.
    template <typename T>
    KeyTable &required(const char *name, T S::*member, const ValueKind<T> &kind,
                       const char *meaning = "")
    {
        KeyRow row = keyRow(name, kind, T(), meaning);
        row.otherwise = QStringLiteral("required");
        return key(row, [name = row.key, member, kind](ObjectReader &reader, S *value) {
            value->*member = kind.read(reader, name);
        });
    }
    // One that is read in a way of its own.
    using Read = std::function<void(ObjectReader &reader, S *value)>;
    KeyTable &key(const KeyRow &row, Read read)
    {
        rows_.push_back(row);
        reads_.push_back(std::move(read));
        return *this;
    }
    // What only the whole object can be asked for.
    KeyTable &check(Read check)
    {
        reads_.push_back(std::move(check));
        return *this;
    }

    // Reads the object; any other key in it is a mistake.
    S read(ObjectReader reader) const
    {
        S value = prototype_;
        read(reader, &value);
        return value;
    }
    // The same over what `value` holds already.
    void read(ObjectReader &reader, S *value) const
    {
        for (const Read &one : reads_)
            one(reader, value);
        reader.done();
    }

    const KeyRows &rows() const { return rows_; }
    const S &prototype() const { return prototype_; }

private:
    const S prototype_;
    KeyRows rows_;
    std::vector<Read> reads_;
};

namespace kinds {

// A list of objects. `text` tells one of them to people.
template <typename S>
ValueKind<std::vector<S>> objects(const KeyTable<S> &keys,
                                  const std::function<QString(const S &)> &text)
{
    return {QStringLiteral("list of objects"),
            [keys](ObjectReader &reader, const QString &key) {
                std::vector<S> list;
                for (const ObjectReader &entry : reader.objects(key))
                    list.push_back(keys.read(entry));
                return list;
            },
            [text](const std::vector<S> &list) {
                QStringList names;
                for (const S &entry : list)
                    names.append(text(entry));
                return listText(names);
            },
            inlineText(keys.rows())};
}

} // namespace kinds
