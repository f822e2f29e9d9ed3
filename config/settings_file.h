// "set.json": what this program remembers for its next run.
#pragma once

#include "config/link_kind.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>

// Everything that "set.json" holds. Any thread; a value type.
struct StoredSettings
{
    // One settings object a model; an empty one is not written.
    QJsonObject d1;
    QJsonObject d2;
    QJsonObject d3;
    QString serial = QStringLiteral("D3"); // of the last headset
    LinkKind link = LinkKind::NotChosen;   // of the last run; may be another number
    QByteArray numberMark;                 // internal: see JsonDocument
};

namespace settings_file {

struct Reading
{
    StoredSettings settings;
    bool isJson = false;
};

// What `text` makes of the settings that were there `before`. Models that it
// does not mention, or all of them when it is no JSON, get fresh objects;
// incomplete ones are repaired; a serial or link that it does not mention
// stays.
[[nodiscard]] Reading read(const QByteArray &text, StoredSettings before = {});

// What is to be stored when the file could be read only after the run had begun
// with the settings `before`, which are `now` what they are: members that the
// run has changed are as they are now, all others as the file has them. A file
// that is no JSON adds nothing.
[[nodiscard]] StoredSettings merge(const Reading &file, const StoredSettings &before,
                                   const StoredSettings &now);

// The content of the file. Members at its top level that we do not know are
// gone; those inside a model's object are kept.
QByteArray write(const StoredSettings &settings);

} // namespace settings_file
