#include "tests/win/installed_program_win.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QJsonDocument>

#include <windows.h>

#include <tlhelp32.h>

namespace installed_program {

namespace {

const QString program = QStringLiteral("KOLM_Streaming_Assistant");
const QString steamFolder = QStringLiteral("C:\\Program Files (x86)\\Steam");
const QString steamVrFolder = steamFolder + QStringLiteral("\\steamapps\\common\\SteamVR");
const QString uninstall = QStringLiteral("Microsoft\\Windows\\CurrentVersion\\Uninstall\\");
const QString wow = QStringLiteral("SOFTWARE\\WOW6432Node\\");
const QString steamVrEntry =
    QStringLiteral("SOFTWARE\\") + uninstall + QStringLiteral("Steam App 250820");
const QString environmentNote = QStringLiteral("C:\\steam-environment.txt");
const QString location = QStringLiteral("InstallLocation");

bool copyFile(const QString &from, const QString &to)
{
    QDir().mkpath(QFileInfo(to).path());
    return (!QFile::exists(to) || QFile::remove(to)) && QFile::copy(from, to);
}

bool copyFolder(const QString &from, const QString &to)
{
    const QDir source(from);
    QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    while (files.hasNext()) {
        const QString file = files.next();
        if (!copyFile(file, to + '/' + source.relativeFilePath(file)))
            return false;
        ++count;
    }
    return count > 0;
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

bool setText(HKEY root, const QString &key, const QString &name, const QString &text)
{
    return RegSetKeyValueW(root, key.toStdWString().c_str(),
                           name.isEmpty() ? nullptr : name.toStdWString().c_str(), REG_SZ,
                           text.utf16(), static_cast<DWORD>((text.size() + 1) * 2)) == 0;
}

bool fillRegistry()
{
    const QString steamEntry = wow + uninstall + QStringLiteral("Steam");
    const QString name = QStringLiteral("DisplayName");
    return sayWhereSteamIs(steamFolder) && sayWhereSteamVrIs(steamVrFolder) &&
           setText(HKEY_LOCAL_MACHINE, steamEntry, name, QStringLiteral("Steam")) &&
           setText(HKEY_LOCAL_MACHINE, steamEntry, location, steamFolder) &&
           setText(HKEY_LOCAL_MACHINE, steamVrEntry, name, QStringLiteral("SteamVR")) &&
           setText(HKEY_CLASSES_ROOT, QStringLiteral("steam"), QStringLiteral("URL Protocol"),
                   QString()) &&
           setText(
               HKEY_CLASSES_ROOT, QStringLiteral("steam\\shell\\open\\command"), QString(),
               QStringLiteral("\"%1\\steam.exe\" \"%2\"").arg(steamFolder, QStringLiteral("%1")));
}

// Wine shows the processor of the machine that it runs on.
bool nameTheProcessor()
{
    return setText(HKEY_LOCAL_MACHINE,
                   QStringLiteral("HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0"),
                   QStringLiteral("ProcessorNameString"),
                   QStringLiteral("Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz"));
}

// What stand-ins that are Qt programs need beside them.
bool copyLibraries(const QString &to)
{
    bool ok = true;
    for (const char *name : {"Qt5Core.dll", "Qt5Network.dll", "libgcc_s_seh-1.dll",
                             "libstdc++-6.dll", "libwinpthread-1.dll"})
        ok = ok && copyFile(QStringLiteral(LIBRARIES "/") + name, to + name);
    return ok;
}

bool installSteam()
{
    const QString from = QStringLiteral(STAND_INS "/");
    const QString to = steamVrFolder + QStringLiteral("/bin/win64/");
    bool ok = copyFile(from + "steam.exe", steamFolder + "/steam.exe");
    for (const char *name : {"vrmonitor.exe", "vrserver.exe", "vrstartup.exe"})
        ok = ok && copyFile(from + name, to + name);
    for (const char *name : {"vrcompositor.exe", "vrwebhelper.exe", "vrdashboard.exe"})
        ok = ok && copyFile(from + "vrpart.exe", to + name);
    // The stand-in of SteamVR's server is a Qt program.
    return ok && copyLibraries(to);
}

// As another program that is installed beside ours.
bool installStreamingServer()
{
    return copyFile(QStringLiteral(STREAMING_SERVER),
                    programFolder() + QStringLiteral("/streaming-server-sim.exe")) &&
           copyLibraries(programFolder() + '/');
}

// Calls `use` with every process.
void eachProcess(const std::function<void(const QString &name, DWORD pid)> &use)
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot, &entry); more;
         more = Process32NextW(snapshot, &entry))
        use(QString::fromWCharArray(entry.szExeFile), entry.th32ProcessID);
    CloseHandle(snapshot);
}

struct Search
{
    DWORD pid;
    HWND found;
    LONG area;
};

// The largest of the program's windows that can be seen: dialogs are smaller.
HWND windowOf(qint64 pid)
{
    Search search{static_cast<DWORD>(pid), nullptr, 0};
    EnumWindows(
        [](HWND window, LPARAM parameter) -> BOOL {
            auto *wanted = reinterpret_cast<Search *>(parameter);
            DWORD owner = 0;
            GetWindowThreadProcessId(window, &owner);
            if (owner != wanted->pid || !IsWindowVisible(window))
                return TRUE;
            RECT rect = {};
            GetWindowRect(window, &rect);
            const LONG area = (rect.right - rect.left) * (rect.bottom - rect.top);
            if (area > wanted->area) {
                wanted->found = window;
                wanted->area = area;
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

} // namespace

bool installAll()
{
    return fillRegistry() && installSteam() &&
           copyFolder(QStringLiteral(INSTALLED), programFolder()) && installStreamingServer();
}

bool sayWhereSteamIs(const QString &folder)
{
    return setText(HKEY_LOCAL_MACHINE, wow + QStringLiteral("Valve\\Steam"),
                   QStringLiteral("InstallPath"), folder);
}

bool sayWhereSteamVrIs(const QString &folder)
{
    return setText(HKEY_LOCAL_MACHINE, steamVrEntry, location, folder);
}

QString steamProgram()
{
    return steamFolder + QStringLiteral("\\steam.exe");
}

QString steamVrTool()
{
    return steamVrFolder + QStringLiteral("\\bin\\win64\\vrstartup.exe");
}

QString programFolder()
{
    return QString::fromUtf8("C:/中 文 & é");
}

QString dataFolder()
{
    return QDir::homePath() + QStringLiteral("/AppData/Local/KOLM/") + program;
}

QString openVrPaths()
{
    return QDir::homePath() + QStringLiteral("/AppData/Local/openvr/openvrpaths.vrpath");
}

QString serverLog()
{
    return QStringLiteral("C:/server.log");
}

QString steamsEnvironment()
{
    const QByteArray noted = content(environmentNote);
    return QString::fromUtf16(reinterpret_cast<const ushort *>(noted.constData()),
                              noted.size() / 2);
}

bool layOutFiles(bool modeChosen)
{
    QDir(dataFolder()).removeRecursively();
    QFile::remove(serverLog());
    QFile::remove(environmentNote);
    const auto seed = [](const char *name) {
        return content(QStringLiteral(SEED_FILES "/") + QLatin1String(name));
    };
    return QDir().mkpath(dataFolder()) && nameTheProcessor() &&
           writeFile(programFolder() + "/compare.json", seed("compare.json")) &&
           (!modeChosen || writeFile(dataFolder() + "/set.json", seed("set.json"))) &&
           writeFile(dataFolder() + "/setting.inf", seed("setting.inf")) &&
           writeFile(programFolder() + "/session.json", seed("session.json")) &&
           writeFile(openVrPaths(), seed("openvrpaths.vrpath"));
}

bool runs(const QString &name)
{
    return allProcesses().contains(name);
}

QStringList allProcesses()
{
    QStringList names;
    eachProcess([&names](const QString &name, DWORD) { names.append(name); });
    return names;
}

void end(const QString &name)
{
    eachProcess([&name](const QString &other, DWORD pid) {
        if (other != name)
            return;
        const HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, pid);
        TerminateProcess(process, 1);
        CloseHandle(process);
    });
}

QByteArray content(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QJsonObject json(const QString &path)
{
    return QJsonDocument::fromJson(content(path)).object();
}

QString log()
{
    QString text;
    const QDir folder(dataFolder());
    for (const QString &file : folder.entryList({"*-*-*.txt"}, QDir::Files, QDir::Name))
        text += QString::fromLocal8Bit(content(folder.filePath(file)));
    return text;
}

bool waitUntil(const std::function<bool()> &condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > limit)
            return false;
        // Wakes up for events, and every 50 ms to look again.
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 50, QS_ALLINPUT);
        QCoreApplication::processEvents();
    }
    return true;
}

bool endSteam()
{
    const QStringList parts{"vrmonitor.exe",   "vrserver.exe",    "vrcompositor.exe",
                            "vrwebhelper.exe", "vrdashboard.exe", "steam.exe"};
    return waitUntil([&] {
        bool any = false;
        for (const QString &name : parts) {
            any = any || runs(name);
            end(name);
        }
        return !any;
    });
}

Copy::Copy()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // Whatever it needs beyond Windows has to be in its folder.
    environment.insert("PATH", QStringLiteral("C:\\windows\\system32;C:\\windows"));
    environment.remove("WINEPATH");
    environment.insert("STAND_IN_SERVER_ARGUMENTS",
                       QStringLiteral("--headset D3SIM00001=192.168.1.31 --cell x --log ") +
                           serverLog());
    environment.insert("STAND_IN_ENVIRONMENT", environmentNote);
    process_.setProcessEnvironment(environment);
    process_.setWorkingDirectory(programFolder());
}

Copy::~Copy()
{
    kill();
}

void Copy::putIntoEnvironment(const QString &name, const QString &value)
{
    QProcessEnvironment environment = process_.processEnvironment();
    const bool isPath = name == QLatin1String("PATH");
    environment.insert(name, isPath ? value + ';' + environment.value(name) : value);
    process_.setProcessEnvironment(environment);
}

bool Copy::start()
{
    started_ = static_cast<qint64>(GetTickCount64());
    process_.start(programFolder() + '/' + program + QStringLiteral(".exe"), QStringList());
    return process_.waitForStarted(limit);
}

bool Copy::isRunning()
{
    return process_.state() != QProcess::NotRunning && !process_.waitForFinished(0);
}

std::optional<QRect> Copy::window() const
{
    const HWND window = windowOf(pid());
    RECT rect = {};
    if (!window || !GetWindowRect(window, &rect))
        return std::nullopt;
    return QRect(QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1));
}

bool Copy::showsMessageBox() const
{
    HWND box = nullptr;
    while ((box = FindWindowExW(nullptr, box, L"#32770", nullptr))) {
        DWORD owner = 0;
        GetWindowThreadProcessId(box, &owner);
        if (owner == static_cast<DWORD>(pid()))
            return true;
    }
    return false;
}

void Copy::askToClose() const
{
    PostMessageW(windowOf(pid()), WM_SYSCOMMAND, SC_CLOSE, 0);
}

void Copy::kill()
{
    if (isRunning()) {
        process_.kill();
        process_.waitForFinished(limit);
    }
}

std::optional<int> Copy::waitForEnd()
{
    if (isRunning() && !process_.waitForFinished(limit))
        return std::nullopt;
    lifeTime_ = static_cast<qint64>(GetTickCount64()) - started_;
    if (process_.exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return process_.exitCode();
}

} // namespace installed_program
