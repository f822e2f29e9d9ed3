// Stands in for the programs of SteamVR that only have to be there; which one
// it is, its file name says.
#include "peers/windows/together_win.h"

#include <utility>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, PWSTR, int)
{
    const together::Part part;
    std::wstring name(32768, L'\0');
    name.resize(GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size())));
    name.erase(0, name.rfind(L'\\') + 1);
    for (const auto &[known, turn] : {std::pair(L"vrcompositor.exe", together::Turn::Compositor),
                                      std::pair(L"vrwebhelper.exe", together::Turn::WebHelper),
                                      std::pair(L"vrdashboard.exe", together::Turn::Dashboard)}) {
        if (name == known) {
            part.untilClosed(turn);
            return 0;
        }
    }
    return 1;
}
