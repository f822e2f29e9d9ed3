#include "cloud/body_file.h"

#include <QSaveFile>

#include <cstdio>

bool saveBody(const QByteArray &body, const QString &path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "Could not open %s for writing: %s\n", qPrintable(path),
                     qPrintable(file.errorString()));
        return false;
    }
    return file.write(body) == body.size() && file.commit();
}
