#include "pc/processes.h"

#include "simpc/sim_pc.h"

namespace processes {

std::vector<Entry> list()
{
    std::vector<Entry> entries;
    for (const SimProcess &process : SimPc::current().processes())
        entries.push_back({process.pid, process.name});
    return entries;
}

QString modulePath(quint32 pid)
{
    for (const SimProcess &process : SimPc::current().processes()) {
        if (process.pid == pid)
            return process.path;
    }
    return {};
}

void terminate(quint32 pid)
{
    SimPc &pc = SimPc::current();
    for (const SimProcess &process : pc.processes()) {
        if (process.pid == pid)
            pc.journal.add(QStringLiteral("terminate ") + process.name);
    }
    pc.endProcess(pid);
}

} // namespace processes
