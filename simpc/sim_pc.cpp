#include "simpc/sim_pc.h"

#include <utility>

namespace {

SimPc *currentPc = nullptr;

} // namespace

SimPc::SimPc(Clock &clock, std::unique_ptr<SimCell> cell) : timeline(clock), cell_(std::move(cell))
{
    Q_ASSERT(!currentPc);
    currentPc = this;
    processes.onEnded([this](const processes::Entry &process) { ports.close(process.pid); });
}

SimPc::~SimPc()
{
    currentPc = nullptr;
}

SimPc &SimPc::current()
{
    if (!currentPc)
        qFatal("no simulated PC to run on");
    return *currentPc;
}

bool SimPc::exists()
{
    return currentPc != nullptr;
}

SimCell &SimPc::cell() const
{
    timeline.settle();
    return *cell_;
}
