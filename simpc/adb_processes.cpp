#include "simpc/adb_processes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <thread>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

// No pid of the simulated PC's own processes comes near.
constexpr quint32 pidOffset = 0x40000000;
constexpr int endTries = 500000;

// Empty for a process that has ended, one that nobody has buried yet included.
QString programOf(qint64 pid)
{
    return QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(pid));
}

// Whether it has let go of everything that it held, its ports among that. It
// may still be there for whoever has to bury it.
bool isOver(qint64 pid)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!file.open(QIODevice::ReadOnly))
        return true;
    constexpr int state = 0;
    constexpr int threads = 17;
    const QByteArray all = file.readAll();
    const QList<QByteArray> fields = all.mid(all.lastIndexOf(") ") + 2).split(' ');
    return fields.value(state) == "Z" && fields.value(threads) == "1";
}

bool belongs(qint64 pid, const QByteArray &setting)
{
    const QString name = QFileInfo(programOf(pid)).fileName();
    if (name != QLatin1String("adb") && name != QLatin1String("adb.exe"))
        return false;
    QFile environment(QStringLiteral("/proc/%1/environ").arg(pid));
    return environment.open(QIODevice::ReadOnly) &&
           environment.readAll().split('\0').contains(setting);
}

std::vector<processes::Entry> list(const QByteArray &setting)
{
    std::vector<processes::Entry> entries;
    for (const QString &entry : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        bool isPid = false;
        const qint64 pid = entry.toLongLong(&isPid);
        if (isPid && belongs(pid, setting))
            entries.push_back({pidOffset + static_cast<quint32>(pid), QStringLiteral("adb.exe")});
    }
    return entries;
}

QString modulePath(quint32 simPid, const QByteArray &setting)
{
    const qint64 pid = qint64(simPid) - pidOffset;
    return pid > 0 && belongs(pid, setting) ? programOf(pid) : QString();
}

void end(quint32 simPid, const QByteArray &setting)
{
    if (simPid < pidOffset)
        return;
    const auto pid = static_cast<pid_t>(simPid - pidOffset);
    if (!belongs(pid, setting) || ::kill(pid, SIGKILL) != 0)
        return;
    for (int i = 0; i < endTries && !isOver(pid); ++i)
        std::this_thread::yield();
}

} // namespace

SimProcesses::HostProcesses adb_processes::onPort(quint16 port)
{
    const QByteArray setting = "ANDROID_ADB_SERVER_PORT=" + QByteArray::number(port);
    return {[setting] { return list(setting); },
            [setting](quint32 pid) { return modulePath(pid, setting); },
            [setting](quint32 pid) { end(pid, setting); }};
}

quint16 adb_processes::freePort()
{
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto *generic = reinterpret_cast<sockaddr *>(&address);
    const bool bound =
        fd >= 0 && ::bind(fd, generic, size) == 0 && ::getsockname(fd, generic, &size) == 0;
    if (fd >= 0)
        ::close(fd);
    return bound ? ntohs(address.sin_port) : 0;
}
