#include "pc/power_mode.h"

#include <windows.h>

namespace {

// As the system defines them; compilers' headers may be older.
constexpr int powerThrottling = 4; // a PROCESS_INFORMATION_CLASS
struct PowerThrottling
{
    ULONG version = 1;
    ULONG controlled = 0; // which of the bits below we decide, the system the others
    ULONG state = 0;
};
constexpr ULONG executionSpeed = 1;

using SetProcessInformationFunction = BOOL(WINAPI *)(HANDLE, int, void *, DWORD);

} // namespace

bool power_mode::setEfficient(bool efficient)
{
    const HMODULE kernel = ::GetModuleHandleW(L"kernel32.dll");
    const auto set = reinterpret_cast<SetProcessInformationFunction>(
        reinterpret_cast<void *>(::GetProcAddress(kernel, "SetProcessInformation")));
    if (!set)
        return false;
    PowerThrottling wish;
    if (efficient)
        wish.controlled = wish.state = executionSpeed;
    return set(::GetCurrentProcess(), powerThrottling, &wish, sizeof wish) != FALSE;
}
