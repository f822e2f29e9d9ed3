#include "pc/append_file.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

void appendToFile(const QString &path, const QByteArray &bytes)
{
    const int file = ::open(QFile::encodeName(path).constData(),
                            O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (file < 0)
        return;
    const ssize_t written = ::write(file, bytes.constData(), static_cast<size_t>(bytes.size()));
    static_cast<void>(written);
    ::close(file);
}
