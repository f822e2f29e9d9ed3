// Which processes hold TCP ports. Pure.
#pragma once

#include "pc/processes.h"
#include "pc/tcp_table.h"

#include <QList>
#include <QStringList>

#include <vector>

namespace port_owners {

// The names of the processes that own a row with one of the ports as its local
// one, in whatever state; in the order of `processes`, each process once. Takes
// time in proportion to the tables.
QStringList names(const std::vector<tcp_table::Row> &rows,
                  const std::vector<processes::Entry> &processes, const QList<quint16> &ports);

} // namespace port_owners
