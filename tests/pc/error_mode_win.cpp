#include "tests/pc/error_mode.h"

#include <windows.h>

void beQuietAboutCrashes()
{
    SetErrorMode(SEM_NOGPFAULTERRORBOX | SEM_FAILCRITICALERRORS);
}

QString wrongAddress()
{
    return QStringLiteral("exception c0000005 at");
}

QString fullStack()
{
    const bool isWine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version");
    return isWine ? QString() : QStringLiteral("exception c00000fd at");
}

bool dumpsAreWritten()
{
    return true;
}
