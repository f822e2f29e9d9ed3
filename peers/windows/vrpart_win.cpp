// Stands in for the programs of SteamVR that only have to be there; which one
// it is, its file name says.
#include "peers/windows/stand_in_win.h"

#include <utility>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    const stand_in::Part part;
    std::wstring name(32768, L'\0');
    name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    name.erase(0, name.rfind(L'\\') + 1);
    for (const auto &[known, turn] : {std::pair(L"vrcompositor.exe", stand_in::Turn::Compositor),
                                      std::pair(L"vrwebhelper.exe", stand_in::Turn::WebHelper),
                                      std::pair(L"vrdashboard.exe", stand_in::Turn::Dashboard)}) {
        if (name == known) {
            part.untilClosed(turn);
            return 0;
        }
    }
    return 1;
}
