#include "simpc/host_connections.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace {

// What the descriptors of the process stand for, a socket as "socket:[4711]".
QSet<QByteArray> socketsOf(qint64 pid)
{
    QSet<QByteArray> sockets;
    const QDir folder(QStringLiteral("/proc/%1/fd").arg(pid));
    const QStringList descriptors =
        folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot | QDir::Hidden);
    for (const QString &descriptor : descriptors) {
        const QString target = QFile::symLinkTarget(folder.filePath(descriptor));
        sockets.insert(QFileInfo(target).fileName().toLatin1());
    }
    return sockets;
}

// "0100007F:26CC"
quint16 portOf(const QByteArray &name)
{
    return static_cast<quint16>(name.mid(name.indexOf(':') + 1).toUInt(nullptr, 16));
}

} // namespace

std::vector<tcp_table::Row> host_connections::of(qint64 pid, quint32 owner)
{
    std::vector<tcp_table::Row> rows;
    QFile table(QStringLiteral("/proc/net/tcp"));
    if (!table.open(QIODevice::ReadOnly))
        return rows;
    const QSet<QByteArray> sockets = socketsOf(pid);
    const QList<QByteArray> lines = table.readAll().split('\n');
    for (const QByteArray &line : lines.mid(1)) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        const QByteArray socket = "socket:[" + fields.value(9) + ']';
        if (fields.size() > 9 && sockets.contains(socket))
            rows.push_back({portOf(fields[1]), owner, portOf(fields[2])});
    }
    return rows;
}
