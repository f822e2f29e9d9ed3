#include "simpc/object_reader.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

ObjectReader::ObjectReader(const QJsonObject &object, const QString &path, QString *error)
    : object_(object), path_(path), error_(error)
{
}

QString ObjectReader::pathOf(const QString &key) const
{
    return path_.isEmpty() ? key : path_ + '.' + key;
}

void ObjectReader::fail(const QString &key, const QString &what)
{
    if (error_->isEmpty())
        *error_ = QStringLiteral("\"%1\" %2").arg(pathOf(key), what);
}

bool ObjectReader::has(const QString &key)
{
    known_.append(key);
    return object_.contains(key);
}

bool ObjectReader::flag(const QString &key, bool otherwise)
{
    if (!has(key))
        return otherwise;
    if (!object_[key].isBool())
        fail(key, QStringLiteral("must be true or false"));
    return object_[key].toBool();
}

QString ObjectReader::text(const QString &key, const QString &otherwise)
{
    if (!has(key))
        return otherwise;
    if (!object_[key].isString())
        fail(key, QStringLiteral("must be a text"));
    return object_[key].toString();
}

QStringList ObjectReader::texts(const QString &key, const QStringList &otherwise)
{
    if (!has(key))
        return otherwise;
    if (object_[key].isString())
        return {object_[key].toString()};
    QStringList list;
    bool ok = object_[key].isArray();
    const QJsonArray entries = object_[key].toArray();
    for (const QJsonValue &entry : entries) {
        ok = ok && entry.isString();
        list.append(entry.toString());
    }
    if (!ok)
        fail(key, QStringLiteral("must be a text or a list of texts"));
    return list;
}

int ObjectReader::milliseconds(const QString &key, int otherwise)
{
    if (!has(key))
        return otherwise;
    constexpr double week = 7 * 24 * 3600;
    const double seconds = object_[key].toDouble(-1);
    if (seconds >= 0 && seconds <= week)
        return static_cast<int>(std::lround(seconds * 1000));
    fail(key, QStringLiteral("must be a number of seconds from 0 up to a week"));
    return 0;
}

qint64 ObjectReader::number(const QString &key, qint64 least, qint64 otherwise)
{
    if (!has(key))
        return otherwise;
    constexpr double largest = 9007199254740992.0; // beyond, a double skips numbers
    const double value = object_[key].toDouble(std::nan(""));
    if (value >= static_cast<double>(least) && value <= largest && value == std::floor(value))
        return static_cast<qint64>(value);
    fail(key, QStringLiteral("must be a whole number from %1 up").arg(least));
    return least;
}

std::vector<qint64> ObjectReader::numbers(const QString &key, qint64 least, qint64 most)
{
    std::vector<qint64> list;
    if (!has(key))
        return list;
    bool ok = object_[key].isArray();
    const QJsonArray entries = object_[key].toArray();
    for (const QJsonValue &entry : entries) {
        const double value = entry.toDouble(std::nan(""));
        const bool good = value >= static_cast<double>(least) &&
                          value <= static_cast<double>(most) && value == std::floor(value);
        list.push_back(good ? static_cast<qint64>(value) : least);
        ok = ok && good;
    }
    if (!ok)
        fail(key,
             QStringLiteral("must be a list of whole numbers from %1 to %2").arg(least).arg(most));
    return list;
}

int ObjectReader::choice(const QString &key, const QStringList &words, int otherwise)
{
    if (!has(key))
        return otherwise;
    const int place = object_[key].isString() ? words.indexOf(object_[key].toString()) : -1;
    if (place < 0)
        fail(key, QStringLiteral("must be one of \"%1\"").arg(words.join("\", \"")));
    return place;
}

QJsonValue ObjectReader::value(const QString &key)
{
    return has(key) ? object_[key] : QJsonValue(QJsonValue::Undefined);
}

ObjectReader ObjectReader::object(const QString &key)
{
    if (has(key) && !object_[key].isObject())
        fail(key, QStringLiteral("must be an object"));
    return {object_[key].toObject(), pathOf(key), error_};
}

std::vector<ObjectReader> ObjectReader::objects(const QString &key)
{
    std::vector<ObjectReader> readers;
    if (!has(key))
        return readers;
    bool ok = object_[key].isArray();
    const QJsonArray entries = object_[key].toArray();
    for (int i = 0; i < entries.size(); ++i) {
        ok = ok && entries[i].isObject();
        readers.emplace_back(entries[i].toObject(),
                             QStringLiteral("%1[%2]").arg(pathOf(key)).arg(i), error_);
    }
    if (!ok)
        fail(key, QStringLiteral("must be a list of objects"));
    return readers;
}

QStringList ObjectReader::freeKeys()
{
    known_ = object_.keys();
    return known_;
}

void ObjectReader::done()
{
    const QStringList keys = object_.keys();
    const auto unknown = std::find_if(keys.begin(), keys.end(),
                                      [this](const QString &key) { return !known_.contains(key); });
    if (unknown != keys.end())
        fail(*unknown, QStringLiteral("is not a key of a scenario"));
}
