#include "tests/base/denied_access.h"

#include <QDir>

#include <windows.h>

// Opened by somebody who shares it with nobody.
struct LockedFile::Private
{
    HANDLE handle;
};

LockedFile::LockedFile(const QString &path) : path_(path), d(std::make_unique<Private>())
{
    const std::wstring name = QDir::toNativeSeparators(path).toStdWString();
    d->handle = CreateFileW(name.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
}

LockedFile::~LockedFile()
{
    if (d->handle != INVALID_HANDLE_VALUE)
        CloseHandle(d->handle);
}
