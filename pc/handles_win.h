// Owners of Win32 handles, for the files that touch Win32.
#pragma once

#include <windows.h>

#include <memory>

struct HandleCloser
{
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};

// A kernel handle that is closed with its owner. Give it null, never
// INVALID_HANDLE_VALUE.
using KernelHandle = std::unique_ptr<HANDLE, HandleCloser>;

struct RegistryKeyCloser
{
    using pointer = HKEY;
    void operator()(HKEY key) const { RegCloseKey(key); }
};

using RegistryKey = std::unique_ptr<HKEY, RegistryKeyCloser>;

// A COM object that is let go of with its owner.
template <typename Interface>
class ComPointer
{
public:
    ComPointer() = default;
    ~ComPointer()
    {
        if (object_)
            object_->Release();
    }
    ComPointer(const ComPointer &) = delete;
    ComPointer &operator=(const ComPointer &) = delete;

    Interface *operator->() const { return object_; }
    // Where a function that makes the object puts it; once.
    Interface **put() { return &object_; }

private:
    Interface *object_ = nullptr;
};
