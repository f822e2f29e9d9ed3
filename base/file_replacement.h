// How the content of a file is replaced so that nobody is left with half of
// it, on a system that refuses a rename while anybody has the file open.
#pragma once

#include "base/file_io.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>

class Clock;

// The complete new content is put beside the file and then renamed over it.
// When that is refused (on Windows every reader stands in its way, a virus
// scanner or the search index for instance) it is tried again for a moment;
// then the content is written over in place, and the copy stays beside the
// file until that is done. Whoever is killed meanwhile leaves both behind:
// finish() puts the copy into its place.
//
// What base/file_io.h offers goes through system(). One replacement at a time
// in this process; any thread. Blocks for a moment at most (patience below)
// beside what the disk takes.
class FileReplacement
{
public:
    struct Dependencies
    {
        Clock &clock;
        // Puts the file `from` into the place of `to`.
        std::function<bool(const QString &from, const QString &to)> rename;
    };
    // How long it is tried again what others may refuse for a moment only.
    static constexpr std::chrono::milliseconds patience{200};

    // In place without a copy where none can be made (no right to create files
    // there), or rather not at all.
    enum class Uncopied { Fail, Overwrite };

    explicit FileReplacement(Dependencies dependencies);
    static FileReplacement &system();

    [[nodiscard]] WriteResult replace(const QString &path, const QByteArray &content,
                                      Uncopied uncopied);
    void finish(const QString &path);

    // The content of a file that others may hold for a moment; nothing at once
    // when there is no such file.
    [[nodiscard]] std::optional<QByteArray> read(const QString &path);
    // The same for a file that is about to be edited: nothing also while it may
    // not be written.
    [[nodiscard]] std::optional<QByteArray> readForEdit(const QString &path);

    // Where the copy of the file at `path` lies.
    static QString copyOf(const QString &path);

private:
    using Reader = std::optional<QByteArray> (*)(const QString &);
    std::optional<QByteArray> readWith(Reader reader, const QString &path);
    bool retry(const std::function<bool()> &attempt);
    WriteResult putInPlace(const QString &file, const QByteArray &content);

    const Dependencies dependencies_;
};

// Whether a file that holds `content` is what is left of one that was to become
// `copy` and was interrupted: the beginning of it, perhaps with the NULs behind
// that a power cut leaves. Whole contents, old ones and the new one, are not.
bool isInterruptedCopy(const QByteArray &content, const QByteArray &copy);
