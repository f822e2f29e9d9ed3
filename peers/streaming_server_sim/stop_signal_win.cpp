#include "peers/streaming_server_sim/stop_signal.h"

#include <utility>

#include <windows.h>

namespace {

std::function<void()> stopRequested;

BOOL WINAPI handle(DWORD)
{
    stopRequested();
    return TRUE;
}

} // namespace

void onStopRequest(std::function<void()> stop)
{
    stopRequested = std::move(stop);
    SetConsoleCtrlHandler(handle, TRUE);
}
