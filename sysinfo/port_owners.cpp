#include "sysinfo/port_owners.h"

#include <QSet>

QStringList port_owners::names(const std::vector<tcp_table::Row> &rows,
                               const std::vector<processes::Entry> &processes,
                               const QList<quint16> &ports)
{
    const QSet<quint16> wanted(ports.begin(), ports.end());
    QSet<quint32> owners;
    for (const tcp_table::Row &row : rows) {
        if (wanted.contains(row.localPort))
            owners.insert(row.pid);
    }
    QStringList names;
    for (const processes::Entry &process : processes) {
        if (owners.contains(process.pid))
            names.append(process.name);
    }
    return names;
}
