#include "base/file_io.h"

#include "base/file_replacement.h"

#include <QFile>

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

} // namespace

std::optional<QByteArray> readContent(const QString &path)
{
    return read(path, QIODevice::ReadOnly);
}

std::optional<QByteArray> readForEdit(const QString &path)
{
    return read(path, QIODevice::ReadWrite);
}

std::optional<QByteArray> readPatiently(const QString &path)
{
    return FileReplacement::system().read(path);
}

std::optional<QByteArray> readForEditPatiently(const QString &path)
{
    return FileReplacement::system().readForEdit(path);
}

WriteResult replaceFile(const QString &path, const QByteArray &content)
{
    return FileReplacement::system().replace(path, content, FileReplacement::Uncopied::Fail);
}

WriteResult replaceForeignFile(const QString &path, const QByteArray &content)
{
    return FileReplacement::system().replace(path, content, FileReplacement::Uncopied::Overwrite);
}

void finishReplacement(const QString &path)
{
    FileReplacement::system().finish(path);
}
