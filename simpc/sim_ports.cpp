#include "simpc/sim_ports.h"

#include "simpc/sim_timeline.h"

#include <algorithm>

void SimPorts::open(quint32 pid, quint16 port)
{
    const MutexLock lock(mutex_);
    rows_.push_back({port, pid});
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
    const MutexLock lock(mutex_);
    return rows_;
}
