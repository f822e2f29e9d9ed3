#include "peers/windows/stand_in_win.h"

#include <cstdio>
#include <cstdlib>
#include <cwchar>

#include <shellapi.h>

namespace stand_in {

namespace {

constexpr DWORD closesAfter = 1500; // ms
constexpr DWORD closingGap = 250;   // ms

} // namespace

std::wstring ownFolder()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path.substr(0, path.rfind(L'\\'));
}

bool hasArgument(const wchar_t *text)
{
    int count = 0;
    LPWSTR *const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    bool found = false;
    for (int i = 1; i < count; ++i)
        found = found || text == std::wstring(arguments[i]);
    LocalFree(arguments);
    return found;
}

HANDLE startProgram(const std::wstring &path, const std::wstring &arguments)
{
    std::wstring line = L'"' + path + L'"';
    if (!arguments.empty())
        line += L' ' + arguments;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                        nullptr, nullptr, &startup, &started))
        return nullptr;
    CloseHandle(started.hThread);
    return started.hProcess;
}

bool exists(const wchar_t *event)
{
    const HANDLE opened = OpenEventW(SYNCHRONIZE, FALSE, event);
    if (opened)
        CloseHandle(opened);
    return opened != nullptr;
}

void noteEnvironment()
{
    const wchar_t *const path = _wgetenv(L"STAND_IN_ENVIRONMENT");
    FILE *const file = path ? _wfopen(path, L"wb") : nullptr;
    if (!file)
        return;
    wchar_t *const block = GetEnvironmentStringsW();
    for (const wchar_t *variable = block; *variable; variable += std::wcslen(variable) + 1) {
        std::fwrite(variable, sizeof *variable, std::wcslen(variable), file);
        std::fwrite(L"\n", sizeof *variable, 1, file);
    }
    std::fclose(file);
    FreeEnvironmentStringsW(block);
}

Part::Part() : close_(CreateEventW(nullptr, TRUE, FALSE, closeEvent)) {}

void Part::untilClosed(Turn turn) const
{
    WaitForSingleObject(close_, INFINITE);
    Sleep(closesAfter + closingGap * static_cast<DWORD>(turn));
}

bool Part::closesWithin(DWORD milliseconds) const
{
    return WaitForSingleObject(close_, milliseconds) == WAIT_OBJECT_0;
}

} // namespace stand_in
