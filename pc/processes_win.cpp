#include "pc/processes.h"

#include "pc/handles_win.h"
#include "pc/system_programs.h"

#include <QProcess>
#include <QStringList>

#include <chrono>

#include <psapi.h>
#include <tlhelp32.h>

namespace processes {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds commandLimit = 30s; // to start and to finish
constexpr std::chrono::milliseconds turn = 250ms;

// Within the limit, unless whoever waits is asked and gives up.
template <typename Wait>
bool waitFor(const Wait &isOver, const std::function<bool()> &goesOn)
{
    for (auto waited = 0ms; waited < commandLimit; waited += turn) {
        if (isOver(static_cast<int>(turn.count())))
            return true;
        if (goesOn && !goesOn())
            return false;
    }
    return false;
}

} // namespace

std::vector<Entry> list()
{
    std::vector<Entry> entries;
    const KernelHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (!snapshot)
        return entries;
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot.get(), &entry); more;
         more = Process32NextW(snapshot.get(), &entry))
        entries.push_back({entry.th32ProcessID, QString::fromWCharArray(entry.szExeFile)});
    return entries;
}

QString modulePath(quint32 pid)
{
    const KernelHandle process(OpenProcess(PROCESS_ALL_ACCESS, FALSE, pid));
    if (!process)
        return {};
    wchar_t path[MAX_PATH] = {};
    const DWORD length = K32GetModuleFileNameExW(process.get(), nullptr, path, MAX_PATH);
    return QString::fromWCharArray(path, static_cast<int>(length));
}

void terminate(quint32 pid, const std::function<bool()> &goesOn)
{
    QProcess taskkill;
    taskkill.start(system_programs::pathOf(QStringLiteral("taskkill")),
                   {QStringLiteral("/PID"), QString::number(pid), QStringLiteral("/F")},
                   QIODevice::ReadWrite);
    if (waitFor([&](int limit) { return taskkill.waitForStarted(limit); }, goesOn))
        waitFor([&](int limit) { return taskkill.waitForFinished(limit); }, goesOn);
}

} // namespace processes
