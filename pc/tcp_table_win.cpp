#include "pc/tcp_table.h"

#include <winsock2.h>

#include "pc/handles_win.h"

#include <iphlpapi.h>

namespace tcp_table {

namespace {

constexpr ULONG firstSize = 32; // bytes; holds one row at most

using TableBlock = HeapBlock<MIB_TCPTABLE2>;

TableBlock allocate(ULONG size)
{
    return TableBlock(static_cast<MIB_TCPTABLE2 *>(HeapAlloc(GetProcessHeap(), 0, size)));
}

} // namespace

Table read()
{
    Table table;
    ULONG size = firstSize;
    TableBlock block = allocate(size);
    if (block && GetTcpTable2(block.get(), &size, TRUE) == ERROR_INSUFFICIENT_BUFFER) {
        block.reset();
        block = allocate(size);
    }
    if (!block) {
        table.failure = Table::NoMemory;
        return table;
    }
    table.error = GetTcpTable2(block.get(), &size, TRUE);
    if (table.error != NO_ERROR) {
        table.failure = Table::NotAnswered;
        return table;
    }
    table.rows.reserve(block->dwNumEntries);
    for (DWORD i = 0; i < block->dwNumEntries; ++i) {
        const MIB_TCPROW2 &row = block->table[i];
        table.rows.push_back({ntohs(static_cast<u_short>(row.dwLocalPort)), row.dwOwningPid});
    }
    return table;
}

} // namespace tcp_table
