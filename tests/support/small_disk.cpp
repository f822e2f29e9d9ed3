#include "tests/support/small_disk.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStorageInfo>
#include <QStringList>

namespace {

bool run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

} // namespace

SmallDisk::SmallDisk(const QString &path) : path_(path)
{
    QDir().mkpath(path_);
    mounted_ = run(QStringLiteral("mount"),
                   {QStringLiteral("-t"), QStringLiteral("tmpfs"), QStringLiteral("-o"),
                    QStringLiteral("size=512k"), QStringLiteral("kolm"), path_});
}

SmallDisk::~SmallDisk()
{
    if (mounted_)
        run(QStringLiteral("umount"), {path_});
}

bool SmallDisk::fillUp(qint64 left) const
{
    QFile filler(path_ + QStringLiteral("/filler"));
    const qint64 size = QStorageInfo(path_).bytesAvailable() - left;
    return filler.open(QIODevice::WriteOnly) &&
           filler.write(QByteArray(static_cast<int>(size), 'f')) == size;
}

void SmallDisk::makeRoom() const
{
    QFile::remove(path_ + QStringLiteral("/filler"));
}
