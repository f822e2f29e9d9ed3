#include "simpc/sim_ports.h"

#include "simpc/sim_timeline.h"

#include <algorithm>
#include <utility>

void SimPorts::open(quint32 pid, quint16 port)
{
    const MutexLock lock(mutex_);
    rows_.push_back({port, pid, 0});
}

void SimPorts::close(quint32 pid)
{
    const MutexLock lock(mutex_);
    rows_.erase(std::remove_if(rows_.begin(), rows_.end(),
                               [pid](const tcp_table::Row &row) { return row.pid == pid; }),
                rows_.end());
}

std::vector<tcp_table::Row> SimPorts::rows() const
{
    timeline_.settle();
    std::vector<tcp_table::Row> rows;
    std::function<std::vector<tcp_table::Row>()> hostConnections;
    {
        const MutexLock lock(mutex_);
        rows = rows_;
        hostConnections = hostConnections_;
    }
    if (hostConnections) {
        const std::vector<tcp_table::Row> more = hostConnections();
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
}

void SimPorts::setHostConnections(std::function<std::vector<tcp_table::Row>()> connections)
{
    const MutexLock lock(mutex_);
    hostConnections_ = std::move(connections);
}
