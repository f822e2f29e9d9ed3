#include "pc/library_search.h"

#include <string>

#include <windows.h>

namespace library_search {

namespace {

std::wstring programFolder()
{
    std::wstring path(32768, L'\0'); // as long as any
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.find_last_of(L'\\') + 1);
}

} // namespace

void trustOwnFoldersOnly(const QString &libraries)
{
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32 |
                             LOAD_LIBRARY_SEARCH_USER_DIRS);
    // What the manifest names is looked in for the program alone, not for its plugins.
    AddDllDirectory((programFolder() + libraries.toStdWString()).c_str());
    // For the few that look by the old rules.
    SetDllDirectoryW(L"");
}

} // namespace library_search
