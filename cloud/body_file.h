// Keeping what was downloaded.
#pragma once

#include <QString>

class QIODevice;

// Replaces the file at `path` by everything that `body` still holds, as one
// step: afterwards the new file is there whole, or what was there before. Takes
// no second copy into memory. Says why on the standard error stream when the
// file cannot be opened.
bool saveBody(QIODevice &body, const QString &path);
