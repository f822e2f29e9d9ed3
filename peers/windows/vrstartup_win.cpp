// Stands in for vrstartup.exe: with -shutdown it asks SteamVR to close, which
// goes on after its own end.
#include "peers/windows/together_win.h"

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    constexpr DWORD passingOn = 400; // ms
    if (!together::hasArgument(L"-shutdown"))
        return 1;
    const HANDLE close = OpenEventW(EVENT_MODIFY_STATE, FALSE, together::closeEvent);
    Sleep(passingOn);
    return !close || SetEvent(close) ? 0 : 1;
}
