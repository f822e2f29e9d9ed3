#include "base/clock.h"
#include "tests/base/denied_access.h"

#include <QDebug>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

// There are no locks here that would keep anybody from opening a file, and
// permissions do not stop the administrator. So the process has no handle left
// to open it with.
struct LockedFile::Private
{
    rlimit before;
};

LockedFile::LockedFile(const QString &path) : path_(path), d(std::make_unique<Private>())
{
    // The undefined-behaviour sanitizer opens a pipe when it meets a class for the
    // first time: let it meet those that wait and log.
    Clock::system().sleep(std::chrono::milliseconds(0));
    QString line;
    QDebug(&line) << path;
    const int next = open("/dev/null", O_RDONLY | O_CLOEXEC);
    close(next);
    getrlimit(RLIMIT_NOFILE, &d->before);
    rlimit limit = d->before;
    limit.rlim_cur = static_cast<rlim_t>(next);
    setrlimit(RLIMIT_NOFILE, &limit);
}

LockedFile::~LockedFile()
{
    setrlimit(RLIMIT_NOFILE, &d->before);
}
