#include "base/file_replacement.h"

#include "base/clock.h"
#include "base/mutex.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <filesystem>
#include <system_error>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds retryInterval = 25ms;

// Held while a file is replaced or a replacement finished.
Mutex replacing;

bool renameOver(const QString &from, const QString &to)
{
    std::error_code error;
    std::filesystem::rename(from.toStdU16String(), to.toStdU16String(), error);
    return !error;
}

// A link stays one: what it leads to is replaced.
QString targetOf(const QString &path)
{
    const QFileInfo file(path);
    return file.isSymLink() && file.exists() ? file.canonicalFilePath() : path;
}

// A rename asks for nobody's leave, and whoever may do everything would not be
// stopped by the owner's mark either.
bool mayBeReplaced(const QFileInfo &file)
{
    return file.isFile() && file.isWritable() &&
           file.permissions().testFlag(QFileDevice::WriteOwner);
}

// OpenFailed where it could not be given its name, too.
WriteResult makeCopy(const QString &path, const QByteArray &content)
{
    QSaveFile copy(path);
    if (!copy.open(QIODevice::WriteOnly))
        return WriteResult::OpenFailed;
    // Flushes itself, because commit() takes no notice of a flush that fails: on
    // a full disk it would leave an empty file.
    if (copy.write(content) == content.size() && copy.flush())
        return copy.commit() ? WriteResult::Ok : WriteResult::OpenFailed;
    copy.cancelWriting();
    return WriteResult::WriteFailed;
}

WriteResult overwrite(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return WriteResult::OpenFailed;
    const bool written = file.write(content) == content.size() && file.flush();
    file.close();
    return written && file.error() == QFileDevice::NoError ? WriteResult::Ok
                                                           : WriteResult::WriteFailed;
}

} // namespace

FileReplacement::FileReplacement(Dependencies dependencies) : dependencies_(std::move(dependencies))
{
}

FileReplacement &FileReplacement::system()
{
    static FileReplacement replacement({Clock::system(), renameOver});
    return replacement;
}

QString FileReplacement::copyOf(const QString &path)
{
    return path + QLatin1String(".new");
}

bool FileReplacement::retry(const std::function<bool()> &attempt)
{
    for (auto waited = 0ms; !attempt(); waited += retryInterval) {
        if (waited >= patience)
            return false;
        dependencies_.clock.sleep(retryInterval);
    }
    return true;
}

WriteResult FileReplacement::replace(const QString &path, const QByteArray &content,
                                     Uncopied uncopied)
{
    const MutexLock lock(replacing);
    const QString file = targetOf(path);
    const QFileInfo before(file);
    // There is nothing that could be harmed or in the way.
    if (!before.exists())
        return makeCopy(file, content);
    if (!mayBeReplaced(before))
        return WriteResult::OpenFailed;
    WriteResult copied = WriteResult::OpenFailed;
    retry([&] {
        copied = makeCopy(copyOf(file), content);
        return copied != WriteResult::OpenFailed;
    });
    // A copy that does not fit on the disk must not cost the old file.
    if (copied == WriteResult::OpenFailed && uncopied == Uncopied::Overwrite)
        return overwrite(file, content);
    if (copied != WriteResult::Ok)
        return copied;
    QFile::setPermissions(copyOf(file), before.permissions());
    return putInPlace(file, content);
}

// With the copy made. A write that was begun and failed leaves it behind.
WriteResult FileReplacement::putInPlace(const QString &file, const QByteArray &content)
{
    const QString copy = copyOf(file);
    if (retry([&] { return dependencies_.rename(copy, file); }))
        return WriteResult::Ok;
    const WriteResult written = overwrite(file, content);
    if (written != WriteResult::WriteFailed)
        QFile::remove(copy);
    return written;
}

void FileReplacement::finish(const QString &path)
{
    const MutexLock lock(replacing);
    const QString file = targetOf(path);
    const QString copy = copyOf(file);
    if (!QFile::exists(copy))
        return;
    const std::optional<QByteArray> complete = readContent(copy);
    const std::optional<QByteArray> content = readContent(file);
    if (!complete || (!content && QFile::exists(file)))
        return; // held for a moment; the copy waits
    if (content && isInterruptedCopy(*content, *complete))
        static_cast<void>(putInPlace(file, *complete));
    else
        QFile::remove(copy);
}

std::optional<QByteArray> FileReplacement::read(const QString &path)
{
    return readWith(readContent, path);
}

std::optional<QByteArray> FileReplacement::readForEdit(const QString &path)
{
    return readWith(::readForEdit, path);
}

std::optional<QByteArray> FileReplacement::readWith(Reader reader, const QString &path)
{
    std::optional<QByteArray> content;
    retry([&] {
        content = reader(path);
        return content || !QFile::exists(path);
    });
    return content;
}

bool isInterruptedCopy(const QByteArray &content, const QByteArray &copy)
{
    int end = content.size();
    while (end > 0 && content.at(end - 1) == '\0')
        --end;
    return content != copy && content.size() <= copy.size() && copy.startsWith(content.left(end));
}
