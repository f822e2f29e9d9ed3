#include "base/crash_text.h"

#include "base/last_lines.h"

#include <cstring>

CrashText &CrashText::text(const char *text)
{
    return this->text(text, std::strlen(text));
}

CrashText &CrashText::text(const char *text, std::size_t size)
{
    for (std::size_t i = 0; i < size; ++i) {
        if (used_ == sizeof buffer_)
            flush();
        buffer_[used_++] = text[i];
    }
    return *this;
}

CrashText &CrashText::hex(std::uint64_t value, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text(&"0123456789abcdef"[(value >> shift) & 0xf], 1);
    return *this;
}

CrashText &CrashText::address(std::uint64_t address)
{
    return hex(address, 16);
}

CrashText &CrashText::code(std::uint32_t code)
{
    return hex(code, 8);
}

CrashText &CrashText::number(std::uint64_t number)
{
    char digits[20];
    std::size_t at = sizeof digits;
    do {
        digits[--at] = static_cast<char>('0' + number % 10);
        number /= 10;
    } while (number);
    return text(digits + at, sizeof digits - at);
}

CrashText &CrashText::lastLines()
{
    text("log\n");
    last_lines::forEach(
        [](const char *line, std::size_t size, void *self) {
            static_cast<CrashText *>(self)->text("  ").text(line, size).text("\n");
        },
        this);
    return *this;
}

void CrashText::flush()
{
    write_(target_, buffer_, used_);
    used_ = 0;
}
