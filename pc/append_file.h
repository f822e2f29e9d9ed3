// Adding to the end of a file.
#pragma once

#include <QByteArray>
#include <QString>

// Opens the file at `path` (made if missing, its folder is not), adds `bytes`
// at its end in one piece and closes it. Nobody who adds to the same file at
// the same moment, here or in another process, gets in between; Qt's files
// cannot promise that and ask the system for much more on the way. What cannot
// be written is lost without a word. Any thread.
void appendToFile(const QString &path, const QByteArray &bytes);
