#include "pc/tcp_table.h"

#include "simpc/sim_pc.h"

namespace tcp_table {

Table read()
{
    Table table;
    if (const std::optional<quint32> error = SimPc::current().tcpTableError()) {
        table.failure = *error == 0 ? Table::NoMemory : Table::NotAnswered;
        table.error = *error;
        return table;
    }
    for (const SimTcpRow &row : SimPc::current().tcpRows())
        table.rows.push_back({row.localPort, row.pid});
    return table;
}

} // namespace tcp_table
