// The TCP connections and listeners of this PC (IPv4). Synchronous; any thread.
#pragma once

#include <QtGlobal>

#include <vector>

namespace tcp_table {

struct Row
{
    quint16 localPort = 0;
    quint32 pid = 0;        // of the owner; 0 for rows that nobody owns any more
    quint16 remotePort = 0; // of a connection's other end; 0 for listeners
};

struct Table
{
    enum Failure { None, NoMemory, NotAnswered };
    Failure failure = None;
    quint32 error = 0;     // the system's error number for NotAnswered
    std::vector<Row> rows; // of every state, in the system's sorted order
};

Table read();

} // namespace tcp_table
