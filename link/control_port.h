// The port on which the streaming server looks for us, and who else has it.
#pragma once

#include "pc/processes.h"
#include "pc/tcp_table.h"

#include <QString>

#include <optional>
#include <vector>

// What has become of the port.
struct ControlPort
{
    struct Holder
    {
        quint32 pid = 0;
        QString name; // of its executable
    };

    bool listening = true;
    int error = 0; // the system's number when not listening
    // Another program that has it. Windows may let both of us listen, and gives
    // the server to either.
    std::optional<Holder> holder;
};

namespace control_port {

constexpr quint16 number = 9932;

// The first process in the list that holds the port and is not `ownPid`. Rows
// that nobody owns any more, and those of processes that have ended, linger after
// a connection. Pure.
std::optional<ControlPort::Holder> holderOf(const std::vector<tcp_table::Row> &rows,
                                            const std::vector<processes::Entry> &processes,
                                            quint32 ownPid);

// The process at the other end of a connection to the port, by its own port. Nothing
// also when it has ended. Pure.
std::optional<ControlPort::Holder> peerOf(const std::vector<tcp_table::Row> &rows,
                                          const std::vector<processes::Entry> &processes,
                                          quint16 peerPort);

// Both ask the PC; nothing also when it does not answer. They log nothing. Each takes
// some milliseconds; any thread.
std::optional<ControlPort::Holder> lookForHolder();
std::optional<ControlPort::Holder> lookForPeer(quint16 peerPort);

} // namespace control_port
