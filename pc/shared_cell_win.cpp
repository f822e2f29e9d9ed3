#include "pc/shared_cell.h"

#include "pc/handles_win.h"

namespace {

constexpr wchar_t mutexName[] = L"KOLM_ALVRData_Mutex";
constexpr wchar_t mappingName[] = L"KOLM_ALVRMemory";
constexpr DWORD turn = 250; // ms

// Both sides of the mapping agree on this layout.
struct Layout
{
    quint32 value;
    quint32 present;
};
static_assert(sizeof(Layout) == 8, "the layout is fixed");

// Holds the mutex as long as it lives. A mutex whose holder died is as good as
// any: the eight bytes cannot be left half written in a way that matters.
class Lock
{
public:
    explicit Lock(HANDLE mutex, const SharedCell::GoesOn &goesOn = {}) : mutex_(mutex)
    {
        DWORD outcome = WAIT_TIMEOUT;
        do
            outcome = WaitForSingleObject(mutex, turn);
        while (outcome == WAIT_TIMEOUT && (!goesOn || goesOn()));
        held_ = outcome == WAIT_OBJECT_0 || outcome == WAIT_ABANDONED;
    }
    ~Lock()
    {
        if (held_)
            ReleaseMutex(mutex_);
    }
    Lock(const Lock &) = delete;
    Lock &operator=(const Lock &) = delete;

    bool isHeld() const { return held_; }

private:
    HANDLE mutex_;
    bool held_;
};

} // namespace

// In the order in which they are made; given back the other way round.
struct SharedCell::Handles
{
    KernelHandle mutex;
    KernelHandle mapping;
    MappedView<Layout> view;
};

SharedCell::SharedCell() = default;

SharedCell::~SharedCell()
{
    destroy();
}

bool SharedCell::create()
{
    destroy();
    auto handles = std::make_unique<Handles>();
    handles->mutex.reset(CreateMutexW(nullptr, FALSE, mutexName));
    if (!handles->mutex)
        return false;
    // Asked at once: later calls may change it.
    SetLastError(ERROR_SUCCESS);
    handles->mapping.reset(CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                              sizeof(Layout), mappingName));
    const bool made = GetLastError() != ERROR_ALREADY_EXISTS;
    if (!handles->mapping)
        return false;
    handles->view.reset(static_cast<Layout *>(
        MapViewOfFile(handles->mapping.get(), FILE_MAP_ALL_ACCESS, 0, 0, sizeof(Layout))));
    if (!handles->view)
        return false;
    if (made) {
        const Lock lock(handles->mutex.get());
        if (lock.isHeld())
            *handles->view.get() = Layout{0, 0};
    }
    handles_ = std::move(handles);
    return true;
}

std::optional<quint32> SharedCell::read(const GoesOn &goesOn) const
{
    if (!handles_)
        return std::nullopt;
    const Lock lock(handles_->mutex.get(), goesOn);
    if (!lock.isHeld() || handles_->view->present == 0)
        return std::nullopt;
    return handles_->view->value;
}

bool SharedCell::write(quint32 value, const GoesOn &goesOn)
{
    if (!handles_)
        return false;
    const Lock lock(handles_->mutex.get(), goesOn);
    if (!lock.isHeld())
        return false;
    handles_->view->value = value;
    handles_->view->present = 1;
    return true;
}

void SharedCell::destroy()
{
    handles_.reset();
}
