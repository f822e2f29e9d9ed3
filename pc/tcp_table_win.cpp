#include "pc/tcp_table.h"

#include <winsock2.h>

#include "pc/growing_answer.h"
#include "pc/handles_win.h"

#include <iphlpapi.h>

namespace tcp_table {

namespace {

constexpr ULONG firstSize = 32; // bytes; holds one row at most
// Connections come while we ask: each time the table may have outgrown its room.
constexpr int attempts = 10;

using TableBlock = HeapBlock<MIB_TCPTABLE2>;

TableBlock allocate(ULONG size)
{
    return TableBlock(static_cast<MIB_TCPTABLE2 *>(HeapAlloc(GetProcessHeap(), 0, size)));
}

} // namespace

Table read()
{
    Table table;
    TableBlock block;
    const Fit fit = askUntilItFits(firstSize, attempts, [&](std::uint32_t *size) {
        block.reset();
        block = allocate(*size);
        if (!block)
            return Fit::Refused;
        ULONG needed = *size;
        table.error = GetTcpTable2(block.get(), &needed, TRUE);
        *size = needed;
        if (table.error == ERROR_INSUFFICIENT_BUFFER)
            return Fit::TooSmall;
        return table.error == NO_ERROR ? Fit::Fits : Fit::Refused;
    });
    if (fit != Fit::Fits) {
        table.failure = block ? Table::NotAnswered : Table::NoMemory;
        return table;
    }
    table.rows.reserve(block->dwNumEntries);
    for (DWORD i = 0; i < block->dwNumEntries; ++i) {
        const MIB_TCPROW2 &row = block->table[i];
        // A listener has no other end, and the system leaves there what it likes.
        const bool connected = row.dwState != MIB_TCP_STATE_LISTEN;
        table.rows.push_back(
            {ntohs(static_cast<u_short>(row.dwLocalPort)), row.dwOwningPid,
             connected ? ntohs(static_cast<u_short>(row.dwRemotePort)) : quint16(0)});
    }
    return table;
}

} // namespace tcp_table
