#include "pc/elevated_launch.h"

#include "pc/wide_text_win.h"

#include <windows.h>

#include <shellapi.h>

namespace elevated_launch {

qint64 start(const QString &program, const QString &workingDir)
{
    const HINSTANCE result =
        ShellExecuteW(nullptr, L"runas", wide(program), nullptr, wide(workingDir), SW_SHOWNORMAL);
    return reinterpret_cast<qint64>(result);
}

} // namespace elevated_launch
