// The owner of something that the system hands out and wants back.
#pragma once

#include <utility>

// `Kind` says what is owned:
//     Handle           the system's own type for it; costs nothing to copy
//     none()           the value that stands for nothing
//     isValid(handle)  false for none() and for whatever else the system says
//                      instead of a handle
//     close(handle)    gives a valid one back
//
// Movable and not copyable; what was moved from owns nothing. An owner belongs
// to one thread at a time, as any value does.
template <typename Kind>
class Owned
{
public:
    using Handle = typename Kind::Handle;

    Owned() = default;
    // Takes over what a call returned, valid or not.
    explicit Owned(Handle handle) : handle_(handle) {}
    ~Owned() { reset(); }

    Owned(Owned &&other) noexcept : handle_(other.release()) {}
    Owned &operator=(Owned &&other) noexcept
    {
        reset(other.release());
        return *this;
    }
    Owned(const Owned &) = delete;
    Owned &operator=(const Owned &) = delete;

    explicit operator bool() const { return Kind::isValid(handle_); }
    // Still owned by this object.
    Handle get() const { return handle_; }
    // For handles that are pointers to objects; not for an empty owner.
    Handle operator->() const { return handle_; }

    // Gives back what is owned and takes over the other one.
    void reset(Handle handle = Kind::none())
    {
        const Handle old = std::exchange(handle_, handle);
        if (Kind::isValid(old))
            Kind::close(old);
    }
    // Lets go without giving back.
    [[nodiscard]] Handle release() { return std::exchange(handle_, Kind::none()); }
    // Where a call puts the handle that it makes; empty until then.
    [[nodiscard]] Handle *put()
    {
        reset();
        return &handle_;
    }

private:
    Handle handle_ = Kind::none();
};

// What the kinds of owners have in common whose handles are pointers.
template <typename Pointer>
struct PointerKind
{
    using Handle = Pointer;
    static constexpr Handle none() { return nullptr; }
    static bool isValid(Handle handle) { return handle != nullptr; }
};
