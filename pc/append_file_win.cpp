#include "pc/append_file.h"

#include <windows.h>

void appendToFile(const QString &path, const QByteArray &bytes)
{
    // With this right alone every write goes to the end of the file.
    const HANDLE file =
        CreateFileW(reinterpret_cast<const wchar_t *>(path.utf16()), FILE_APPEND_DATA,
                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    DWORD written = 0;
    WriteFile(file, bytes.constData(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(file);
}
