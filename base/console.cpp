#include "base/console.h"

#include "base/mutex.h"

#include <iostream>

namespace {

// Held while a line is written.
Mutex streamMutex;

template <typename Char>
void writeLine(std::basic_ostream<Char> &stream, const std::basic_string<Char> &line)
{
    const MutexLock lock(streamMutex);
    // A line that could not be written must not silence all later ones.
    stream.clear();
    stream << line << std::endl;
}

} // namespace

void console::info(const std::wstring &line)
{
    writeLine(std::wcout, line);
}

void console::error(const std::wstring &line)
{
    writeLine(std::wcerr, line);
}

void console::echo(const std::string &line)
{
    writeLine(std::cout, line);
}
