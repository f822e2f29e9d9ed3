#include "pc/memory.h"

#include <windows.h>

namespace memory {

quint64 totalPhysical()
{
    MEMORYSTATUSEX status = {};
    status.dwLength = sizeof status;
    return GlobalMemoryStatusEx(&status) ? status.ullTotalPhys : 0;
}

} // namespace memory
