// Reading one JSON object strictly: every key must be known and of its type.
#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <vector>

// Ask for each key that there may be, then call done(). The first mistake, of
// this object or one inside it, is put into `error` as a sentence that names
// the key; afterwards the answers mean nothing. One thread.
class ObjectReader
{
public:
    // `path` is where the object stands, for the messages; empty for the root.
    ObjectReader(const QJsonObject &object, const QString &path, QString *error);

    bool has(const QString &key);
    bool flag(const QString &key, bool otherwise);
    QString text(const QString &key, const QString &otherwise);
    // A list of texts; a single text counts as a list of one.
    QStringList texts(const QString &key, const QStringList &otherwise);
    // Seconds in the file, milliseconds here.
    int milliseconds(const QString &key, int otherwise);
    // A whole number from `least` up.
    qint64 number(const QString &key, qint64 least, qint64 otherwise);
    // A list of whole numbers from `least` up to `most`; empty without the key.
    std::vector<qint64> numbers(const QString &key, qint64 least, qint64 most);
    // One of `words`, as its place among them.
    int choice(const QString &key, const QStringList &words, int otherwise);
    QJsonValue value(const QString &key);
    // The object under the key; an empty one without the key.
    ObjectReader object(const QString &key);
    std::vector<ObjectReader> objects(const QString &key);
    // All keys, for objects whose keys are free.
    QStringList freeKeys();

    // A key that nobody asked for is a mistake.
    void done();

    // For mistakes that only the caller can see.
    void fail(const QString &key, const QString &what);
    QString pathOf(const QString &key) const;

private:
    const QJsonObject object_;
    const QString path_;
    QString *const error_;
    QStringList known_;
};
