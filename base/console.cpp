#include "base/console.h"

#include "base/detached_output.h"
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

// Both streams, narrow and wide.
struct DetachedStreams
{
    DetachedStreams()
    {
        std::cout.rdbuf(&narrow);
        std::wcout.rdbuf(&wide);
        std::cerr.rdbuf(&narrowErrors);
        std::wcerr.rdbuf(&wideErrors);
    }

    DetachedOutput output{1};
    DetachedOutput errors{2};
    DetachedBuffer<char> narrow{output};
    DetachedBuffer<wchar_t> wide{output};
    DetachedBuffer<char> narrowErrors{errors};
    DetachedBuffer<wchar_t> wideErrors{errors};
};

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

void console::neverWait()
{
    // Never destroyed: the streams are flushed after everything else has ended.
    static DetachedStreams &streams = *new DetachedStreams;
    // Made before all that speaks at its end, so it ends after them.
    struct AtTheEnd
    {
        ~AtTheEnd()
        {
            streams.output.finish();
            streams.errors.finish();
        }
    };
    static const AtTheEnd atTheEnd;
}
