#include "link/control_port.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

std::optional<ControlPort::Holder> named(quint32 pid,
                                         const std::vector<processes::Entry> &processes)
{
    const auto owner =
        std::find_if(processes.begin(), processes.end(),
                     [pid](const processes::Entry &process) { return process.pid == pid; });
    if (owner == processes.end())
        return std::nullopt;
    return ControlPort::Holder{owner->pid, owner->name};
}

} // namespace

std::optional<ControlPort::Holder>
control_port::holderOf(const std::vector<tcp_table::Row> &rows,
                       const std::vector<processes::Entry> &processes, quint32 ownPid)
{
    for (const tcp_table::Row &row : rows) {
        if (row.localPort != number || row.pid == 0 || row.pid == ownPid)
            continue;
        if (const auto holder = named(row.pid, processes))
            return holder;
    }
    return std::nullopt;
}

std::optional<ControlPort::Holder>
control_port::peerOf(const std::vector<tcp_table::Row> &rows,
                     const std::vector<processes::Entry> &processes, quint16 peerPort)
{
    for (const tcp_table::Row &row : rows) {
        if (row.localPort != peerPort || row.remotePort != number || row.pid == 0)
            continue;
        if (const auto peer = named(row.pid, processes))
            return peer;
    }
    return std::nullopt;
}

std::optional<ControlPort::Holder> control_port::lookForHolder()
{
    return holderOf(tcp_table::read().rows, processes::list(),
                    static_cast<quint32>(QCoreApplication::applicationPid()));
}

std::optional<ControlPort::Holder> control_port::lookForPeer(quint16 peerPort)
{
    return peerOf(tcp_table::read().rows, processes::list(), peerPort);
}
