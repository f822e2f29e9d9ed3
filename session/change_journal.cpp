#include "session/change_journal.h"

#include <QFile>
#include <QJsonDocument>

#include <optional>

ChangeJournal::ChangeJournal(const QString &dataDir)
    : path_(dataDir + QLatin1String("/changes.jsonl"))
{
    finishReplacement(path_);
}

QList<QJsonObject> ChangeJournal::lines() const
{
    QList<QJsonObject> objects;
    const QList<QByteArray> texts = readPatiently(path_).value_or(QByteArray()).split('\n');
    for (const QByteArray &text : texts) {
        const QJsonDocument document = QJsonDocument::fromJson(text);
        if (document.isObject())
            objects.append(document.object());
    }
    return objects;
}

// The whole file in one step, which is on the disk then: short as it is, that costs
// no more than a line at its end, and leaves no half line.
WriteResult ChangeJournal::append(const QJsonObject &line) const
{
    const std::optional<QByteArray> before = readPatiently(path_);
    if (!before && QFile::exists(path_))
        return WriteResult::OpenFailed;
    QByteArray content = before.value_or(QByteArray());
    if (!content.isEmpty() && !content.endsWith('\n'))
        content += '\n';
    return replaceFile(path_, content + QJsonDocument(line).toJson(QJsonDocument::Compact) + '\n');
}
