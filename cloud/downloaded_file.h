// Keeping what was downloaded.
#pragma once

#include <QByteArray>
#include <QString>

enum class [[nodiscard]] Saved{
    Done,
    Failed, // not there; it would fail again
    Held    // not there, because somebody has the old or the new file open
};

// Replaces the content of the file at `path` as one step: afterwards the new
// file is there whole, or what was there before. Only where the folder takes no new
// file although the file itself may be written, it is written over in place. Says why
// on the standard error stream when the file cannot be opened. Any thread.
Saved saveDownload(const QByteArray &content, const QString &path);
