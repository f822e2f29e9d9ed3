#include "pc/library_search.h"

#include <windows.h>

namespace library_search {

void trustOwnFoldersOnly()
{
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32 |
                             LOAD_LIBRARY_SEARCH_USER_DIRS);
    // For the few that look by the old rules.
    SetDllDirectoryW(L"");
}

} // namespace library_search
