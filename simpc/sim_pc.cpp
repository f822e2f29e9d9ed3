#include "simpc/sim_pc.h"

namespace {

SimPc *currentPc = nullptr;

} // namespace

SimPc::SimPc(Clock &clock) : timeline(clock), cell_(std::make_unique<SimCell>())
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

void SimPc::setSearchPath(const QString &folders)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    searchPath_ = folders;
}

QString SimPc::searchPath() const
{
    const std::lock_guard<std::mutex> lock(mutex_);
    return searchPath_;
}
