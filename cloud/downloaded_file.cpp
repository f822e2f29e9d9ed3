#include "cloud/downloaded_file.h"

#include <QSaveFile>

#include <cstdio>

Saved saveDownload(const QByteArray &content, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
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
