// Writing the record of a crash, from within it: no memory is taken and no lock.
#pragma once

#include <cstddef>
#include <cstdint>

// Collects text in a buffer of its own and hands it on, full or at flush(), to `write`.
class CrashText
{
public:
    using Write = void (*)(void *target, const char *bytes, std::size_t size);

    CrashText(Write write, void *target) : write_(write), target_(target) {}

    CrashText &text(const char *text);
    CrashText &text(const char *text, std::size_t size);
    // "00007ff6a1b2c3d4"
    CrashText &address(std::uint64_t address);
    // "c0000005"
    CrashText &code(std::uint32_t code);
    CrashText &number(std::uint64_t number);
    // The heading "log" and the last lines of the log, each indented.
    CrashText &lastLines();
    void flush();

private:
    CrashText &hex(std::uint64_t value, int digits);

    const Write write_;
    void *const target_;
    char buffer_[512] = {};
    std::size_t used_ = 0;
};
