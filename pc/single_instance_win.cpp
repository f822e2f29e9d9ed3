#include "pc/single_instance.h"

#include "pc/handles_win.h"

SingleInstance::SingleInstance()
{
    KernelHandle mutex(CreateMutexW(nullptr, FALSE, L"KOLM_Streaming_Assistant"));
    first_ = GetLastError() != ERROR_ALREADY_EXISTS;
    // The first copy's handle is left to the system, which closes it when the
    // process ends.
    if (first_)
        static_cast<void>(mutex.release());
}

SingleInstance::~SingleInstance() = default;
