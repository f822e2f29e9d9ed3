#include "cloud/body_file.h"

#include <QIODevice>
#include <QSaveFile>

#include <cstdio>

bool saveBody(QIODevice &body, const QString &path)
{
    constexpr qint64 pieceSize = 1 << 16;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "Could not open %s for writing: %s\n", qPrintable(path),
                     qPrintable(file.errorString()));
        return false;
    }
    while (body.bytesAvailable() > 0) {
        const QByteArray piece = body.read(pieceSize);
        if (piece.isEmpty() || file.write(piece) != piece.size()) {
            file.cancelWriting();
            break;
        }
    }
    return file.commit();
}
