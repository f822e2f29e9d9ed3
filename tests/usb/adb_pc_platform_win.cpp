#include "tests/usb/adb_pc_platform.h"

#include <QDir>
#include <QProcessEnvironment>

#include <windows.h>

namespace {

// Every letter of a folder gets through, unlike with qputenv().
void setPath(const QString &folders)
{
    SetEnvironmentVariableW(L"PATH", reinterpret_cast<const wchar_t *>(folders.utf16()));
}

} // namespace

struct AdbPcPlatform::Private
{
    const QString before = QProcessEnvironment::systemEnvironment().value("PATH");
};

AdbPcPlatform::AdbPcPlatform(quint16) : d(std::make_unique<Private>()) {}

AdbPcPlatform::~AdbPcPlatform()
{
    setPath(d->before);
}

void AdbPcPlatform::letFind(const QString &) {}

void AdbPcPlatform::setSearchPath(const QString &folder)
{
    setPath(QDir::toNativeSeparators(folder) + ';' + d->before);
}
