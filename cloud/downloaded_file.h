// Keeping what was downloaded.
#pragma once

#include <QByteArray>
#include <QString>

// Replaces the content of the file at `path` as one step: afterwards the new
// file is there whole, or what was there before, and then the result is false.
// Says why on the standard error stream when the file cannot be opened. Any
// thread.
[[nodiscard]] bool saveDownload(const QByteArray &content, const QString &path);
