// A program that breaks:  crash_victim HOW RECORD DUMP
// HOW is one of the names below.
#include "app/log_file.h"
#include "base/last_lines.h"
#include "pc/crash_trap.h"
#include "tests/pc/error_mode.h"

#include <QCoreApplication>
#include <QDebug>

#include <cstdlib>
#include <cstring>
#include <map>
#include <stdexcept>
#include <thread>

namespace {

using Break = void (*)();

[[gnu::noinline]] void writeToNull()
{
    volatile int *volatile nobody = nullptr;
    *nobody = 1;
}

// The compiler shall not see that it never ends.
[[gnu::noinline]] int fill(volatile int depth)
{
    volatile char much[4096];
    much[0] = static_cast<char>(depth);
    return depth < 0 ? 0 : fill(depth + 1) + much[0];
}

const std::map<QString, Break> breaks{
    {"null", writeToNull},
    {"thread", [] { std::thread(writeToNull).join(); }},
    {"stack", [] { fill(0); }},
    {"abort", [] { std::abort(); }},
    {"throw", [] { throw std::runtime_error("nobody catches this"); }},
    {"fatal", [] { qFatal("fatal for Qt"); }},
    {"exit", [] { std::exit(3); }},
};

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    installLogFile();
    beQuietAboutCrashes();
    crash_trap::set({arguments.value(2), arguments.value(3)}, "victim 1.2.3");
    for (const char *line : {"the last but one", "the last line"})
        last_lines::add(line, std::strlen(line));
    breaks.at(arguments.value(1))();
    return 0;
}
