// Stands in for vrmonitor.exe: brings the rest of SteamVR up, one program after
// the other.
#include "peers/windows/stand_in_win.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    constexpr DWORD gap = 200; // ms
    const stand_in::Part part;
    for (const wchar_t *name :
         {L"vrserver.exe", L"vrcompositor.exe", L"vrwebhelper.exe", L"vrdashboard.exe"}) {
        if (part.closesWithin(gap))
            break;
        const HANDLE process = stand_in::startProgram(stand_in::ownFolder() + L'\\' + name);
        if (process)
            CloseHandle(process);
    }
    part.untilClosed(stand_in::Turn::Monitor);
    return 0;
}
