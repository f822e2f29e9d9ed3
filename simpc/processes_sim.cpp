#include "pc/processes.h"

#include "simpc/sim_pc.h"

namespace processes {

std::vector<Entry> list()
{
    SimProcesses &processes = SimPc::current().processes;
    processes.countListing();
    return processes.list();
}

QString modulePath(quint32 pid)
{
    return SimPc::current().processes.modulePath(pid);
}

void terminate(quint32 pid, const std::function<bool()> & /*goesOn*/)
{
    SimPc &pc = SimPc::current();
    for (const Entry &process : pc.processes.list()) {
        if (process.pid == pid)
            pc.journal.add(QStringLiteral("terminate ") + process.name);
    }
    pc.processes.end(pid);
}

} // namespace processes
