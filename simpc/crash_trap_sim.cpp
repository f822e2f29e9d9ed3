#include "pc/crash_trap.h"

#include "base/crash_text.h"

#include <QByteArray>
#include <QFile>

#include <array>
#include <atomic>
#include <csignal>
#include <exception>

#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

namespace crash_trap {

namespace {

constexpr std::array<int, 5> fatal{SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT};
constexpr int deepest = 64; // addresses of the stack

// Made before anything breaks: no memory can be had then.
struct Trap
{
    QByteArray record;
    QByteArray program;
    std::array<struct sigaction, fatal.size()> previous;
    std::atomic<bool> sprung{false};
    std::array<char, 1 << 16> stack; // for the report of one that is full
};

Trap &trap()
{
    static Trap &one = *new Trap; // the destructors of other statics may break, too
    return one;
}

void writeTo(void *file, const char *bytes, std::size_t size)
{
    [[maybe_unused]] const ssize_t written = write(*static_cast<int *>(file), bytes, size);
}

void addStack(CrashText &out)
{
    void *addresses[deepest] = {};
    const int count = backtrace(addresses, deepest);
    out.text("stack\n");
    for (int i = 0; i < count; ++i)
        out.text("  ").address(reinterpret_cast<std::uintptr_t>(addresses[i])).text("\n");
}

void addModules(CrashText &out)
{
    out.text("modules\n");
    const int maps = open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
    char bytes[512];
    for (ssize_t got = 0; (got = read(maps, bytes, sizeof bytes)) > 0;)
        out.text(bytes, static_cast<std::size_t>(got));
    close(maps);
}

void writeRecord(const char *why, unsigned number, const void *address)
{
    if (trap().record.isEmpty() || trap().sprung.exchange(true))
        return;
    int file = open(trap().record.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0)
        return;
    CrashText out(writeTo, &file);
    out.text(why);
    if (number)
        out.text(" ").number(number);
    out.text(" at ").address(reinterpret_cast<std::uintptr_t>(address)).text("\n");
    out.text(trap().program.constData(), static_cast<std::size_t>(trap().program.size()));
    out.text("\n").lastLines();
    out.flush();
    addStack(out);
    addModules(out);
    out.flush();
    close(file);
}

void onSignal(int signalNumber, siginfo_t *info, void *)
{
    for (std::size_t i = 0; i < fatal.size(); ++i)
        sigaction(fatal[i], &trap().previous[i], nullptr);
    if (signalNumber == SIGABRT)
        writeRecord(std::current_exception() ? "exception of C++" : "abort", 0, nullptr);
    else
        writeRecord("signal", static_cast<unsigned>(signalNumber), info->si_addr);
    // What broke breaks again, for whoever was told of it before.
    raise(signalNumber);
}

} // namespace

void set(const Places &places, const QString &program)
{
    trap().record = QFile::encodeName(places.record);
    trap().program = program.toUtf8();
    void *first = nullptr;
    backtrace(&first, 1); // loads what it needs
    stack_t stack = {};
    stack.ss_sp = trap().stack.data();
    stack.ss_size = trap().stack.size();
    sigaltstack(&stack, nullptr);
    struct sigaction action = {};
    action.sa_sigaction = onSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    for (std::size_t i = 0; i < fatal.size(); ++i)
        sigaction(fatal[i], &action, &trap().previous[i]);
}

void report(const char *why)
{
    writeRecord(why, 0, nullptr);
}

} // namespace crash_trap
