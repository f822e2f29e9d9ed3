// A program for the tests of what deals with other programs:
//   wait               says "ready" and ends when its standard input does
//   last MS            ends with exit code 7 after so long
//   note FILE ...      writes its command line and how its window is to be
//                      shown into FILE, in UTF-8, a line each
//   (nothing)          writes its environment into the file that the variable
//                      KOLM_NOTE_ENVIRONMENT names, in UTF-8, a variable a line
//   hold               takes the mutex of the streaming cell, says "held" and
//                      ends when its standard input does, without giving it back
//   rival ROUNDS       as often, with the mutex, takes the cell's content away for
//                      a moment and looks whether somebody wrote meanwhile; says
//                      "ready" before, waits for a line, and says how often that was
#include <windows.h>

#include <shellapi.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>

namespace {

struct CellAccess
{
    HANDLE mutex = CreateMutexW(nullptr, FALSE, L"KOLM_ALVRData_Mutex");
    HANDLE mapping =
        CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 8, L"KOLM_ALVRMemory");
    volatile std::uint32_t *cell =
        static_cast<volatile std::uint32_t *>(MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 8));
};

void say(const std::string &line)
{
    std::puts(line.c_str());
    std::fflush(stdout);
}

int untilInputEnds(const char *greeting)
{
    say(greeting);
    while (std::getchar() != EOF) {
    }
    return 0;
}

int rival(int rounds)
{
    const CellAccess access;
    say("ready");
    std::getchar();
    int disturbed = 0;
    for (int i = 0; i < rounds; ++i) {
        WaitForSingleObject(access.mutex, INFINITE);
        const std::uint32_t value = access.cell[0];
        const std::uint32_t present = access.cell[1];
        access.cell[0] = 0xDEADBEEF;
        access.cell[1] = 0;
        SwitchToThread();
        if (access.cell[0] != 0xDEADBEEF || access.cell[1] != 0)
            ++disturbed;
        access.cell[0] = value;
        access.cell[1] = present;
        ReleaseMutex(access.mutex);
    }
    say(std::to_string(disturbed));
    return 0;
}

std::string utf8(const wchar_t *text)
{
    char bytes[4096] = {};
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes - 1, nullptr, nullptr);
    return bytes;
}

// Complete as soon as it has its name.
int noteEnvironment()
{
    const wchar_t *const path = _wgetenv(L"KOLM_NOTE_ENVIRONMENT");
    const std::wstring unfinished = path ? path + std::wstring(L".part") : std::wstring();
    FILE *const file = path ? _wfopen(unfinished.c_str(), L"wb") : nullptr;
    if (!file)
        return 1;
    wchar_t *const block = GetEnvironmentStringsW();
    for (const wchar_t *variable = block; *variable; variable += std::wcslen(variable) + 1)
        std::fprintf(file, "%s\n", utf8(variable).c_str());
    std::fclose(file);
    return MoveFileExW(unfinished.c_str(), path, MOVEFILE_REPLACE_EXISTING) ? 0 : 1;
}

int note(const wchar_t *path)
{
    STARTUPINFOW startup = {};
    GetStartupInfoW(&startup);
    FILE *const file = _wfopen(path, L"wb");
    if (!file)
        return 1;
    std::fprintf(file, "%s\n%d\n", utf8(GetCommandLineW()).c_str(),
                 startup.dwFlags & STARTF_USESHOWWINDOW ? startup.wShowWindow : -1);
    std::fclose(file);
    return 0;
}

} // namespace

int main()
{
    int count = 0;
    LPWSTR *const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::wstring what = count > 1 ? arguments[1] : L"";
    if (count == 1)
        return noteEnvironment();
    if (what == L"wait")
        return untilInputEnds("ready");
    if (what == L"last" && count > 2) {
        const HANDLE never = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        WaitForSingleObject(never, static_cast<DWORD>(std::wcstoul(arguments[2], nullptr, 10)));
        return 7;
    }
    if (what == L"note" && count > 2)
        return note(arguments[2]);
    if (what == L"hold") {
        const CellAccess access;
        WaitForSingleObject(access.mutex, INFINITE);
        return untilInputEnds("held");
    }
    if (what == L"rival" && count > 2)
        return rival(static_cast<int>(std::wcstol(arguments[2], nullptr, 10)));
    return 2;
}
