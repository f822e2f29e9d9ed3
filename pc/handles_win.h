// Owners of what Win32 hands out, for the files that touch it. A kind that
// needs a header of its own stays in the one file that uses it.
#pragma once

#include "pc/owned.h"

#include <windows.h>

struct KernelObject : PointerKind<HANDLE>
{
    // Which of the two says that there is none depends on the call.
    static bool isValid(HANDLE handle) { return handle && handle != INVALID_HANDLE_VALUE; }
    static void close(HANDLE handle) { CloseHandle(handle); }
};
using KernelHandle = Owned<KernelObject>;

struct OpenedKey : PointerKind<HKEY>
{
    static void close(HKEY key) { RegCloseKey(key); }
};
using RegistryKey = Owned<OpenedKey>;

// A `Type` on the process's heap, from HeapAlloc().
template <typename Type>
struct OnHeap : PointerKind<Type *>
{
    static void close(Type *block) { HeapFree(GetProcessHeap(), 0, block); }
};
template <typename Type>
using HeapBlock = Owned<OnHeap<Type>>;

// A file mapping's bytes as a `Type`, from MapViewOfFile().
template <typename Type>
struct Mapped : PointerKind<Type *>
{
    static void close(Type *view) { UnmapViewOfFile(view); }
};
template <typename Type>
using MappedView = Owned<Mapped<Type>>;

template <typename Interface>
struct ComObject : PointerKind<Interface *>
{
    static void close(Interface *object) { object->Release(); }
};
template <typename Interface>
using ComPointer = Owned<ComObject<Interface>>;
