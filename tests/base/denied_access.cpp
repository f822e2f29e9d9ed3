#include "tests/base/denied_access.h"

#include <QFile>
#include <QProcess>

namespace {

bool canOpen(const QString &path, QIODevice::OpenMode mode)
{
    QFile file(path);
    return file.open(mode | QIODevice::ExistingOnly);
}

bool canCreateIn(const QString &folder)
{
    QFile file(folder + QLatin1String("/kolm_probe"));
    return file.open(QIODevice::WriteOnly) && file.remove();
}

const auto kRead = QFileDevice::ReadOwner | QFileDevice::ReadUser;
const auto kWrite = QFileDevice::WriteOwner | QFileDevice::WriteUser;
const auto kEnter = QFileDevice::ExeOwner | QFileDevice::ExeUser;

// The administrator is not stopped by permissions, but by this mark.
void freeze(const QString &path)
{
    QProcess::execute(QStringLiteral("chattr"), {QStringLiteral("+i"), path});
}

void restore(const QString &path, QFileDevice::Permissions permissions)
{
    if (QFile::setPermissions(path, permissions))
        return;
    QProcess::execute(QStringLiteral("chattr"), {QStringLiteral("-i"), path});
    QFile::setPermissions(path, permissions);
}

} // namespace

ReadOnlyFile::ReadOnlyFile(const QString &path) : path_(path)
{
    QFile::setPermissions(path, kRead);
    if (canOpen(path, QIODevice::ReadWrite))
        freeze(path);
}

ReadOnlyFile::~ReadOnlyFile()
{
    restore(path_, kRead | kWrite);
}

bool ReadOnlyFile::works() const
{
    return !canOpen(path_, QIODevice::ReadWrite) && canOpen(path_, QIODevice::ReadOnly);
}

ClosedFolder::ClosedFolder(const QString &path) : path_(path)
{
    QFile::setPermissions(path, kRead | kEnter);
    if (canCreateIn(path))
        freeze(path);
}

ClosedFolder::~ClosedFolder()
{
    restore(path_, kRead | kWrite | kEnter);
}

bool ClosedFolder::works() const
{
    return !canCreateIn(path_);
}

bool LockedFile::works() const
{
    return QFile::exists(path_) && !canOpen(path_, QIODevice::ReadOnly);
}
