// Stands in for steam.exe. The first one stays; one that is given a URL passes
// it on to the one that runs and ends.
#include "peers/windows/stand_in_win.h"

namespace {

constexpr DWORD steamVrAppears = 3000; // ms
constexpr wchar_t steamVrUrl[] = L"steam://rungameid/250820";

void openSteamVr()
{
    if (stand_in::exists(stand_in::closeEvent))
        return; // it runs already
    Sleep(steamVrAppears);
    const HANDLE monitor = stand_in::startProgram(
        stand_in::ownFolder() + L"\\steamapps\\common\\SteamVR\\bin\\win64\\vrmonitor.exe");
    if (monitor)
        CloseHandle(monitor);
}

} // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    if (stand_in::hasArgument(steamVrUrl)) {
        const HANDLE asked = OpenEventW(EVENT_MODIFY_STATE, FALSE, stand_in::steamEvent);
        return asked && SetEvent(asked) ? 0 : 1;
    }
    const HANDLE asked = CreateEventW(nullptr, FALSE, FALSE, stand_in::steamEvent);
    if (!asked || GetLastError() == ERROR_ALREADY_EXISTS)
        return 0;
    stand_in::noteEnvironment();
    while (WaitForSingleObject(asked, INFINITE) == WAIT_OBJECT_0)
        openSteamVr();
    return 1;
}
