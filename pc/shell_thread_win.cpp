#include "pc/shell_thread_win.h"

#include "base/threads.h"

#include <objbase.h>

namespace shell_thread {

bool run(const std::function<void()> &work)
{
    std::thread shell = threads::begin("the shell", [&work] {
        const bool initialised =
            SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE));
        work();
        if (initialised)
            CoUninitialize();
    });
    if (!shell.joinable())
        return false;
    shell.join();
    return true;
}

} // namespace shell_thread
