#include "tests/link/adb_pc_platform.h"

#include <QDir>

struct AdbPcPlatform::Private
{
    const QByteArray before = qgetenv("PATH");
};

AdbPcPlatform::AdbPcPlatform(quint16) : d(std::make_unique<Private>()) {}

AdbPcPlatform::~AdbPcPlatform()
{
    qputenv("PATH", d->before);
}

void AdbPcPlatform::setSearchPath(const QString &folder)
{
    qputenv("PATH", QDir::toNativeSeparators(folder).toLocal8Bit() + ';' + d->before);
}
