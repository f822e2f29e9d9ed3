// Stands in for vrmonitor.exe: brings the rest of SteamVR up, one program after
// the other.
#include "peers/windows/together_win.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    constexpr DWORD gap = 200; // ms
    const together::Part part;
    for (const wchar_t *name :
         {L"vrserver.exe", L"vrcompositor.exe", L"vrwebhelper.exe", L"vrdashboard.exe"}) {
        if (part.closesWithin(gap))
            break;
        const HANDLE process = together::startProgram(together::ownFolder() + L'\\' + name);
        if (process)
            CloseHandle(process);
    }
    part.untilClosed(together::Turn::Monitor);
    return 0;
}
