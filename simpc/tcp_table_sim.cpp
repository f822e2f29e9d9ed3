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
    table.rows = SimPc::current().ports.rows();
    return table;
}

} // namespace tcp_table
