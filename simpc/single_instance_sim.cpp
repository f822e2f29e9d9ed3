#include "pc/single_instance.h"

#include <QDir>
#include <QFile>
#include <QString>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

// A child process must not inherit the lock and outlive us with it.
int openLockFile(const QString &path)
{
    return ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW,
                  0600);
}

// The session's own folder, or else the shared one, where the name has to say
// whose lock it is.
int openLockFile()
{
    const QString runtimeDir = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtimeDir.isEmpty()) {
        const int file =
            openLockFile(runtimeDir + QStringLiteral("/KOLM_Streaming_Assistant.lock"));
        if (file >= 0)
            return file;
    }
    const QString temporary = QDir::tempPath();
    if (temporary.isEmpty())
        return -1; // named, but not there
    return openLockFile(temporary +
                        QStringLiteral("/KOLM_Streaming_Assistant-%1.lock").arg(::getuid()));
}

} // namespace

SingleInstance::SingleInstance()
{
    const int file = openLockFile();
    if (file < 0)
        return;
    // Unlike the file itself, the lock on it ends with the process.
    first_ = ::flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (!first_)
        ::close(file);
}

SingleInstance::~SingleInstance() = default;
