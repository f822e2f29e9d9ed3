#include "link/control_port.h"

#include <QCoreApplication>

#include <algorithm>

std::optional<ControlPort::Holder>
control_port::holderOf(const std::vector<tcp_table::Row> &rows,
                       const std::vector<processes::Entry> &processes, quint32 ownPid)
{
    for (const tcp_table::Row &row : rows) {
        if (row.localPort != number || row.pid == 0 || row.pid == ownPid)
            continue;
        const auto owner =
            std::find_if(processes.begin(), processes.end(),
                         [&](const processes::Entry &process) { return process.pid == row.pid; });
        if (owner != processes.end())
            return ControlPort::Holder{owner->pid, owner->name};
    }
    return std::nullopt;
}

std::optional<ControlPort::Holder> control_port::lookForHolder()
{
    return holderOf(tcp_table::read().rows, processes::list(),
                    static_cast<quint32>(QCoreApplication::applicationPid()));
}
