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
    if (file.write(content) != content.size()) {
        file.cancelWriting();
        return WriteResult::WriteFailed;
    }
    return file.commit() ? WriteResult::Ok : WriteResult::WriteFailed;
}

WriteResult replaceForeignFile(const QString &path, const QByteArray &content)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return overwrite(path, content);
    // A new copy that does not fit on the disk must not cost the old one.
    if (file.write(content) != content.size() || !file.flush()) {
        file.cancelWriting();
        return WriteResult::WriteFailed;
    }
    return file.commit() ? WriteResult::Ok : overwrite(path, content);
}
