// A console program for the tests of what talks with other programs. Copied
// under another name, without arguments, it plays that program: it writes what
// lies beside it as NAME.says to its output, and its folder and command line
// into NAME.heard; with a NAME.hangs beside it, it only waits for the end of its
// input. Otherwise:
//   print TIMES        a line in Chinese, so often
//   outputs            to the output, to the error output, to the output
//   stop-talking EVENT FILE   says "early", closes its outputs, and writes FILE
//                      once EVENT is set
//   leave-child EVENT  says "first" and ends; a child of it keeps the outputs and
//                      says "last" once EVENT is set
//   late EVENT         that child
#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <cwchar>
#include <string>
#include <vector>

namespace {

std::string utf8(const std::wstring &text)
{
    std::vector<char> bytes(text.size() * 3 + 1);
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr);
    return std::string(bytes.data(), static_cast<size_t>(size));
}

void say(DWORD which, const std::string &text)
{
    size_t written = 0;
    while (written < text.size()) {
        DWORD now = 0;
        if (!WriteFile(GetStdHandle(which), text.data() + written,
                       static_cast<DWORD>(text.size() - written), &now, nullptr))
            return;
        written += now;
    }
}

void write(const std::wstring &path, const std::string &text)
{
    if (FILE *file = _wfopen(path.c_str(), L"wb")) {
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    }
}

void waitFor(const wchar_t *event)
{
    const HANDLE handle = CreateEventW(nullptr, TRUE, FALSE, event);
    WaitForSingleObject(handle, INFINITE);
    CloseHandle(handle);
}

std::wstring ownPath()
{
    wchar_t path[1024] = {};
    GetModuleFileNameW(nullptr, path, 1024);
    return path;
}

void leaveChild(const wchar_t *event)
{
    std::wstring command = L"\"" + ownPath() + L"\" late " + event;
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process = {};
    CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                   &process);
}

int play(const std::wstring &name)
{
    wchar_t folder[1024] = {};
    GetCurrentDirectoryW(1024, folder);
    write(name + L".heard", utf8(folder) + "\n" + utf8(GetCommandLineW()) + "\n");
    if (FILE *hangs = _wfopen((name + L".hangs").c_str(), L"rb")) {
        std::fclose(hangs);
        while (std::getchar() != EOF) {
        }
        return 0;
    }
    FILE *file = _wfopen((name + L".says").c_str(), L"rb");
    if (!file)
        return 1;
    std::string text;
    char bytes[4096];
    for (size_t got = 1; got > 0;) {
        got = std::fread(bytes, 1, sizeof bytes, file);
        text.append(bytes, got);
    }
    std::fclose(file);
    say(STD_OUTPUT_HANDLE, text);
    return 0;
}

} // namespace

int main()
{
    int count = 0;
    LPWSTR *const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    const std::wstring path = ownPath();
    const std::wstring name = path.substr(0, path.rfind(L'.'));
    const std::wstring own = name.substr(name.find_last_of(L"\\/") + 1);
    if (own.find(L"talker") == std::wstring::npos)
        return play(name);

    const std::wstring what = count > 1 ? arguments[1] : L"";
    if (what == L"print" && count > 2) {
        std::string text;
        const std::string line = utf8(L"\u89c4\u5219\u540d\u79f0\n");
        for (long i = std::wcstol(arguments[2], nullptr, 10); i > 0; --i)
            text += line;
        say(STD_OUTPUT_HANDLE, text);
    } else if (what == L"outputs") {
        say(STD_OUTPUT_HANDLE, "out\r\n");
        say(STD_ERROR_HANDLE, "err\r\n");
        say(STD_OUTPUT_HANDLE, "");
        say(STD_OUTPUT_HANDLE, "out\r\n");
    } else if (what == L"stop-talking" && count > 3) {
        say(STD_OUTPUT_HANDLE, "early");
        CloseHandle(GetStdHandle(STD_OUTPUT_HANDLE));
        CloseHandle(GetStdHandle(STD_ERROR_HANDLE));
        waitFor(arguments[2]);
        write(arguments[3], "late");
    } else if (what == L"leave-child" && count > 2) {
        say(STD_OUTPUT_HANDLE, "first\n");
        leaveChild(arguments[2]);
    } else if (what == L"late" && count > 2) {
        waitFor(arguments[2]);
        say(STD_OUTPUT_HANDLE, "last\n");
    } else {
        return 2;
    }
    return 0;
}
