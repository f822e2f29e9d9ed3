#include "peers/streaming_server_sim/cell.h"

#include <cstdint>

#include <windows.h>

namespace {

constexpr DWORD cellSize = 8;

} // namespace

struct Cell::Access
{
    HANDLE mutex = nullptr;
    HANDLE mapping = nullptr;
    // The value, then whether there is one.
    volatile std::uint32_t *cell = nullptr;
};

// The mapping lives while anybody holds it, so it is held from here on.
Cell::Cell(const std::string &) : access_(new Access)
{
    access_->mutex = CreateMutexW(nullptr, FALSE, L"KOLM_ALVRData_Mutex");
    access_->mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                          cellSize, L"KOLM_ALVRMemory");
    if (access_->mapping)
        access_->cell = static_cast<volatile std::uint32_t *>(
            MapViewOfFile(access_->mapping, FILE_MAP_ALL_ACCESS, 0, 0, cellSize));
}

Cell::~Cell()
{
    if (access_->cell)
        UnmapViewOfFile(const_cast<std::uint32_t *>(access_->cell));
    if (access_->mapping)
        CloseHandle(access_->mapping);
    if (access_->mutex)
        CloseHandle(access_->mutex);
}

bool Cell::sayUp()
{
    if (!access_->mutex || !access_->cell)
        return false;
    WaitForSingleObject(access_->mutex, INFINITE);
    access_->cell[0] = 1;
    access_->cell[1] = 1;
    ReleaseMutex(access_->mutex);
    return true;
}
