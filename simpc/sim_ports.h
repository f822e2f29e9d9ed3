// The TCP ports that processes of a simulated PC hold.
#pragma once

#include "base/mutex.h"
#include "pc/tcp_table.h"

#include <functional>
#include <vector>

class SimTimeline;

// Any thread.
class SimPorts
{
public:
    explicit SimPorts(const SimTimeline &timeline) : timeline_(timeline) {}

    SimPorts(const SimPorts &) = delete;
    SimPorts &operator=(const SimPorts &) = delete;

    void open(quint32 pid, quint16 port);
    // All that the process holds.
    void close(quint32 pid);
    // In the order in which they were opened.
    std::vector<tcp_table::Row> rows() const;

    // Connections of the real machine that count as this PC's, asked for at every look
    // at the ports; they come after its own.
    void setHostConnections(std::function<std::vector<tcp_table::Row>()> connections);

private:
    const SimTimeline &timeline_;
    mutable Mutex mutex_;
    std::vector<tcp_table::Row> rows_ GUARDED_BY(mutex_);
    std::function<std::vector<tcp_table::Row>()> hostConnections_ GUARDED_BY(mutex_);
};
