#include "pc/crash_trap.h"

#include "base/crash_text.h"
#include "pc/handles_win.h"
#include "pc/wide_text_win.h"

#include <QByteArray>

#include <atomic>
#include <csignal>
#include <cstring>
#include <exception>
#include <utility>

#include <dbghelp.h>
#include <psapi.h>

namespace crash_trap {

namespace {

constexpr int deepest = 64;             // addresses of the stack
constexpr DWORD mostModules = 256;      // the rest is not named
constexpr ULONG stackReserve = 1 << 16; // for the report of a stack that is full

// Made before anything breaks: no memory can be had then.
struct Trap
{
    Places places;
    QByteArray program;
    LPTOP_LEVEL_EXCEPTION_FILTER previous = nullptr;
    std::atomic<bool> sprung{false};
    HMODULE modules[mostModules] = {};
};

Trap &trap()
{
    static Trap &one = *new Trap; // the destructors of other statics may break, too
    return one;
}

KernelHandle create(const QString &path)
{
    return KernelHandle(CreateFileW(wide(path), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                    CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void writeTo(void *file, const char *bytes, std::size_t size)
{
    DWORD written = 0;
    WriteFile(file, bytes, static_cast<DWORD>(size), &written, nullptr);
}

void addStack(CrashText &out, CONTEXT context)
{
    out.text("stack\n");
    for (int i = 0; i < deepest && context.Rip; ++i) {
        out.text("  ").address(context.Rip).text("\n");
        DWORD64 base = 0;
        PRUNTIME_FUNCTION function = RtlLookupFunctionEntry(context.Rip, &base, nullptr);
        if (function) {
            void *handlerData = nullptr;
            DWORD64 frame = 0;
            RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &handlerData,
                             &frame, nullptr);
            continue;
        }
        // A function that calls nobody, or an address where no code is: its caller is
        // on top of the stack.
        SIZE_T got = 0;
        if (!ReadProcessMemory(GetCurrentProcess(), reinterpret_cast<void *>(context.Rsp),
                               &context.Rip, sizeof context.Rip, &got))
            break;
        context.Rsp += sizeof context.Rip;
    }
}

void addModules(CrashText &out)
{
    out.text("modules\n");
    const HANDLE process = GetCurrentProcess();
    HMODULE *const modules = trap().modules;
    DWORD needed = 0;
    if (!K32EnumProcessModules(process, modules, sizeof trap().modules, &needed))
        return;
    const DWORD count = needed / sizeof(HMODULE);
    for (DWORD i = 0; i < count && i < mostModules; ++i) {
        MODULEINFO info = {};
        char path[MAX_PATH] = {};
        K32GetModuleInformation(process, modules[i], &info, sizeof info);
        const DWORD size = K32GetModuleFileNameExA(process, modules[i], path, MAX_PATH);
        const auto begin = reinterpret_cast<DWORD64>(info.lpBaseOfDll);
        out.text("  ").address(begin).text("-").address(begin + info.SizeOfImage).text(" ");
        out.text(path, size).text("\n");
    }
}

void writeRecord(const char *why, DWORD code, const CONTEXT &context)
{
    const KernelHandle file = create(trap().places.record);
    if (!file)
        return;
    CrashText out(writeTo, file.get());
    out.text(why);
    if (code)
        out.text(" ").code(code);
    out.text(" at ").address(context.Rip);
    out.text("\n").text(trap().program.constData(), static_cast<size_t>(trap().program.size()));
    SYSTEMTIME now = {};
    GetSystemTime(&now);
    out.text("\ntime ").number(now.wYear).text("-").number(now.wMonth).text("-").number(now.wDay);
    out.text(" ").number(now.wHour).text(":").number(now.wMinute).text(" UTC, thread ");
    out.number(GetCurrentThreadId()).text("\n").lastLines();
    out.flush();
    addStack(out, context);
    out.flush();
    addModules(out);
    out.flush();
}

void writeDump(EXCEPTION_POINTERS *exception)
{
    // Not loaded before: hardly any run needs it.
    const HMODULE library = LoadLibraryExW(L"dbghelp.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (!library)
        return;
    const auto write = reinterpret_cast<decltype(&MiniDumpWriteDump)>(
        reinterpret_cast<void *>(GetProcAddress(library, "MiniDumpWriteDump")));
    const KernelHandle file = create(trap().places.dump);
    if (!write || !file)
        return;
    MINIDUMP_EXCEPTION_INFORMATION information = {GetCurrentThreadId(), exception, FALSE};
    write(GetCurrentProcess(), GetCurrentProcessId(), file.get(), MiniDumpNormal, &information,
          nullptr, nullptr);
}

// What breaks while this is written is not told any more.
void report(const char *why, EXCEPTION_POINTERS *exception)
{
    if (trap().places.record.isEmpty() || trap().sprung.exchange(true))
        return;
    writeRecord(why, exception->ExceptionRecord->ExceptionCode, *exception->ContextRecord);
    writeDump(exception);
}

LONG WINAPI onException(EXCEPTION_POINTERS *exception)
{
    report("exception", exception);
    return trap().previous ? trap().previous(exception) : EXCEPTION_CONTINUE_SEARCH;
}

// From abort(), which std::terminate() ends in, too.
void onAbort(int)
{
    crash_trap::report(std::current_exception() ? "exception of C++" : "abort");
}

} // namespace

void set(const Places &places, const QString &program)
{
    trap().places = places;
    trap().program = program.toUtf8();
    trap().previous = SetUnhandledExceptionFilter(onException);
    ULONG reserve = stackReserve;
    SetThreadStackGuarantee(&reserve);
    std::signal(SIGABRT, onAbort);
}

void report(const char *why)
{
    CONTEXT context = {};
    RtlCaptureContext(&context);
    EXCEPTION_RECORD record = {};
    record.ExceptionAddress = reinterpret_cast<void *>(context.Rip);
    EXCEPTION_POINTERS here = {&record, &context};
    report(why, &here);
}

} // namespace crash_trap
