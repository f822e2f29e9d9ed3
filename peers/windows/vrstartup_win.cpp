// Stands in for vrstartup.exe: with -shutdown it asks SteamVR to close, which
// goes on after its own end.
#include "peers/windows/stand_in_win.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    constexpr DWORD passingOn = 400; // ms
    if (!stand_in::hasArgument(L"-shutdown"))
        return 1;
    const HANDLE close = OpenEventW(EVENT_MODIFY_STATE, FALSE, stand_in::closeEvent);
    Sleep(passingOn);
    return !close || SetEvent(close) ? 0 : 1;
}
