#include "cloud/downloaded_file.h"

#include "base/file_io.h"

#include <QFile>
#include <QSaveFile>

#include <cstdio>

namespace {

// An installed program's folder takes no new file from an ordinary user.
bool writeOver(const QByteArray &content, const QString &path)
{
    return QFile::exists(path) && replaceForeignFile(path, content) == WriteResult::Ok;
}

} // namespace

Saved saveDownload(const QByteArray &content, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        if (writeOver(content, path))
            return Saved::Done;
        std::fprintf(stderr, "Could not open %s for writing: %s\n", qPrintable(path),
                     qPrintable(file.errorString()));
        return Saved::Failed;
    }
    // commit() takes no notice of a flush that fails: on a full disk it would
    // put an empty file in the place of the old one.
    if (file.write(content) != content.size() || !file.flush())
        return Saved::Failed;
    return file.commit() ? Saved::Done : Saved::Held;
}
