#include "pc/single_instance.h"

#include <windows.h>

SingleInstance::SingleInstance()
{
    const HANDLE mutex = CreateMutexW(nullptr, FALSE, L"KOLM_Streaming_Assistant");
    first_ = GetLastError() != ERROR_ALREADY_EXISTS;
    // The first copy's handle is left to the system, which closes it when the
    // process ends.
    if (!first_ && mutex)
        CloseHandle(mutex);
}

SingleInstance::~SingleInstance() = default;
