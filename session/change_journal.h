// The record of outside changes on the disk: "changes.jsonl" in the program's data
// folder, a JSON object a line. Lines are only ever added.
#pragma once

#include "base/file_io.h"

#include <QJsonObject>
#include <QList>
#include <QString>

// One thread at a time.
class ChangeJournal
{
public:
    explicit ChangeJournal(const QString &dataDir);

    // All lines, the oldest first; those that are no JSON object are left out.
    QList<QJsonObject> lines() const;

    // Returns when the line is on the disk. What somebody keeps from being read is
    // not written over.
    WriteResult append(const QJsonObject &line) const;

private:
    const QString path_;
};
