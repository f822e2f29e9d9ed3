#include "pc/command_pipe.h"

#include "pc/handles_win.h"
#include "pc/system_programs.h"
#include "pc/wide_text_win.h"

#include <clocale>
#include <cstdlib>
#include <vector>

struct CommandPipe::Private
{
    KernelHandle readEnd;
};

namespace {

std::vector<wchar_t> widened(const QByteArray &text)
{
    std::setlocale(LC_CTYPE, "");
    // Never more characters than bytes. The system writes into the buffer.
    std::vector<wchar_t> wide(static_cast<size_t>(text.size()) + 1);
    if (std::mbstowcs(wide.data(), text.constData(), wide.size()) == static_cast<size_t>(-1))
        wide.front() = 0;
    return wide;
}

// Where the line's program is, if it is one of Windows' own; null: the system looks
// for it.
const wchar_t *programOf(const QString &path, const QString &name)
{
    return path == name ? nullptr : wide(path);
}

} // namespace

CommandPipe::CommandPipe(const QByteArray &commandLine) : d(std::make_unique<Private>())
{
    std::vector<wchar_t> command = widened(commandLine);
    SECURITY_ATTRIBUTES inherited = {};
    inherited.nLength = sizeof inherited;
    inherited.bInheritHandle = TRUE;
    KernelHandle writeEnd; // ours is closed before the first read
    if (!CreatePipe(d->readEnd.put(), writeEnd.put(), &inherited, 0)) {
        failure_ = NoPipe;
        return;
    }

    const QString name = QString::fromLocal8Bit(commandLine).section(' ', 0, 0);
    const QString path = system_programs::pathOf(name);
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
    startup.wShowWindow = SW_HIDE;
    startup.hStdOutput = writeEnd.get();
    startup.hStdError = writeEnd.get();
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(programOf(path, name), command.data(), nullptr, nullptr, TRUE, 0, nullptr,
                        nullptr, &startup, &started)) {
        failure_ = NoProcess;
        return;
    }
    // Nobody waits for it: the end of its output is its end.
    const KernelHandle thread(started.hThread);
    const KernelHandle process(started.hProcess);
}

CommandPipe::~CommandPipe() = default;

int CommandPipe::read(char *data, int size)
{
    DWORD got = 0;
    if (!ReadFile(d->readEnd.get(), data, static_cast<DWORD>(size), &got, nullptr))
        return -1;
    return static_cast<int>(got);
}
