// Reading files whole, and writing them so that nobody is left with half of one.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The whole content of an existing file; nothing when it is missing, cannot be
// opened or cannot be read to its end. Any thread.
std::optional<QByteArray> readContent(const QString &path);

// The same for a file that is about to be edited: nothing also when it may not
// be written. The file stays as it is. Any thread.
std::optional<QByteArray> readForEdit(const QString &path);

enum class [[nodiscard]] WriteResult{
    Ok,
    OpenFailed, // nothing could be opened for writing; the file is as it was
    WriteFailed // the content did not get there
};

// Replaces the content of the file at `path` as one step: whatever happens on
// the way (a full disk, a kill, a power cut), afterwards the old or the new
// content is there, whole. Creates the file, not its folder. A file that may
// not be written gives OpenFailed. Any thread.
WriteResult replaceFile(const QString &path, const QByteArray &content);

// The same for a file that belongs to another program. Where the folder does
// not let us replace it as one step although the file itself may be written
// (no right to create files there, or a reader that keeps the old one open),
// the content is written over in place, as that program would do it.
WriteResult replaceForeignFile(const QString &path, const QByteArray &content);
