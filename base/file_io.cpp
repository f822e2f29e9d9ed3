#include "base/file_io.h"

#include <QFile>
#include <QSaveFile>

namespace {

std::optional<QByteArray> read(const QString &path, QIODevice::OpenMode mode)
{
    QFile file(path);
    if (!file.open(mode | QIODevice::ExistingOnly))
        return std::nullopt;
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return content;
}

// Flushes itself, because commit() takes no notice of a flush that fails: on a
// full disk it would put an empty file in the place of the old one.
bool fill(QSaveFile &file, const QByteArray &content)
{
    if (file.write(content) == content.size() && file.flush())
        return true;
    file.cancelWriting();
    return false;
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

std::optional<QByteArray> readContent(const QString &path)
{
    return read(path, QIODevice::ReadOnly);
}

std::optional<QByteArray> readForEdit(const QString &path)
{
    return read(path, QIODevice::ReadWrite);
}

WriteResult replaceFile(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return WriteResult::OpenFailed;
    return fill(file, content) && file.commit() ? WriteResult::Ok : WriteResult::WriteFailed;
}

WriteResult replaceForeignFile(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return overwrite(path, content);
    // A new copy that does not fit on the disk must not cost the old one.
    if (!fill(file, content))
        return WriteResult::WriteFailed;
    return file.commit() ? WriteResult::Ok : overwrite(path, content);
}
