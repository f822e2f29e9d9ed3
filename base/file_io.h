// Reading files whole, and writing them so that nobody is left with half of one.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// The whole content of an existing file; nothing when it is missing, cannot be
// opened or cannot be read to its end. Any thread.
std::optional<QByteArray> readContent(const QString &path);

// As readContent() and readForEdit() below, and tried again for a moment while
// somebody holds the file.
std::optional<QByteArray> readPatiently(const QString &path);
std::optional<QByteArray> readForEditPatiently(const QString &path);

// As readContent() for a file that is about to be edited: nothing also when it
// may not be written. The file stays as it is. Any thread.
std::optional<QByteArray> readForEdit(const QString &path);

enum class [[nodiscard]] WriteResult{
    Ok,
    OpenFailed, // nothing could be opened for writing; the file is as it was
    WriteFailed // the content did not get there
};

// Replaces the content of the file at `path` as one step: whatever happens on
// the way (a full disk, a kill, a power cut), afterwards the old or the new
// content is there, whole, or the next finishReplacement() brings it about.
// Creates the file, not its folder. A file that may not be written, or that
// somebody holds for longer than a moment, gives OpenFailed. Any thread; waits
// for a moment where somebody holds the file (base/file_replacement.h).
WriteResult replaceFile(const QString &path, const QByteArray &content);

// The same for a file that belongs to another program. Where the folder takes
// no new file although the file itself may be written, the content is written
// over in place, as that program would do it.
WriteResult replaceForeignFile(const QString &path, const QByteArray &content);

// Puts the file at `path` in order if a replacement of it was interrupted. To
// be called before the first look at a file that one of the two above writes.
void finishReplacement(const QString &path);
