// Standard output that nobody has to wait for.
#pragma once

#include "base/mutex.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <streambuf>
#include <string>

// Writes bytes to a descriptor on a thread of its own. Whoever reads at its other end
// may be slow, not read at all, or be gone: only what is written is lost by that.
// Where the system raises a signal at a write without a reader, the process has to
// ignore it.
//
// Any thread, but for constructor and destructor.
class DetachedOutput
{
public:
    // So many bytes wait at most; more are dropped, each call's as a whole.
    static constexpr std::size_t capacity = 1048576;
    // How long finish() waits, in all and for a piece to be taken.
    static constexpr std::chrono::milliseconds longestFinish{3000};
    static constexpr std::chrono::milliseconds patience{500};

    // The descriptor is not owned; it stays open as long as the process.
    explicit DetachedOutput(int descriptor);
    // What was not written by then is written by the thread that is left behind.
    ~DetachedOutput();

    DetachedOutput(const DetachedOutput &) = delete;
    DetachedOutput &operator=(const DetachedOutput &) = delete;

    // Returns at once.
    void write(const std::string &bytes);
    // Waits until everything is written, or nobody takes it any more. Whether it is.
    bool finish();

private:
    struct Shared;
    static void work(const std::shared_ptr<Shared> &shared);

    // Outlives this object where the thread is left behind.
    const std::shared_ptr<Shared> shared_;
};

// A stream's buffer, handed over by every flush. Any thread.
template <typename Char>
class DetachedBuffer final : public std::basic_streambuf<Char>
{
public:
    // `output` outlives the buffer.
    explicit DetachedBuffer(DetachedOutput &output) : output_(output) {}

protected:
    using Traits = std::char_traits<Char>;

    typename Traits::int_type overflow(typename Traits::int_type c) override
    {
        if (Traits::eq_int_type(c, Traits::eof()))
            return Traits::not_eof(c);
        const MutexLock lock(mutex_);
        text_.push_back(Traits::to_char_type(c));
        return c;
    }

    std::streamsize xsputn(const Char *text, std::streamsize size) override
    {
        const MutexLock lock(mutex_);
        text_.append(text, static_cast<std::size_t>(size));
        return size;
    }

    int sync() override;

private:
    DetachedOutput &output_;
    Mutex mutex_;
    std::basic_string<Char> text_ GUARDED_BY(mutex_);
};

extern template class DetachedBuffer<char>;
extern template class DetachedBuffer<wchar_t>;
