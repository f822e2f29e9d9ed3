#include "pc/append_file.h"

#include "pc/handles_win.h"
#include "pc/wide_text_win.h"

void appendToFile(const QString &path, const QByteArray &bytes)
{
    // With this right alone every write goes to the end of the file.
    const KernelHandle file(CreateFileW(wide(path), FILE_APPEND_DATA,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                        nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file)
        return;
    DWORD written = 0;
    WriteFile(file.get(), bytes.constData(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}
