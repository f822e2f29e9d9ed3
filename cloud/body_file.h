// Keeping what was downloaded.
#pragma once

#include <QByteArray>
#include <QString>

// Replaces the content of the file at `path` as one step: afterwards the new
// file is there whole, or what was there before. Says why on the standard error
// stream when the file cannot be opened.
[[nodiscard]] bool saveBody(const QByteArray &body, const QString &path);
