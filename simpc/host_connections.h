// The TCP connections of a process of the real machine.
#pragma once

#include "pc/tcp_table.h"

#include <vector>

namespace host_connections {

// Those of the real process `pid` over IPv4, as rows of a process `owner` of the
// simulated PC. None when nobody may look. Any thread.
std::vector<tcp_table::Row> of(qint64 pid, quint32 owner);

} // namespace host_connections
