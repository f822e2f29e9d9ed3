#include "pc/elevated_launch.h"

#include "pc/downloaded_program.h"
#include "pc/handles_win.h"
#include "pc/wide_text_win.h"

#include <QDir>

#include <shellapi.h>

namespace elevated_launch {

namespace {

// What the shell would say of a file that cannot be opened.
qint64 resultOf(DWORD error)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
        return SE_ERR_FNF;
    case ERROR_SHARING_VIOLATION:
        return SE_ERR_SHARE;
    default:
        return SE_ERR_ACCESSDENIED;
    }
}

} // namespace

qint64 start(const QString &program, const QString &workingDir, const MayStart &mayStart)
{
    const QString file = QDir::toNativeSeparators(program);
    const KernelHandle held(CreateFileW(wide(file), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!held)
        return resultOf(GetLastError());
    if (!mayStart(downloaded_program::signerOf(program)))
        return refused;
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"runas", wide(program), nullptr, wide(workingDir), SW_SHOWNORMAL);
    return reinterpret_cast<qint64>(result);
}

} // namespace elevated_launch
