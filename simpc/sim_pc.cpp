#include "simpc/sim_pc.h"

#include <algorithm>
#include <utility>

namespace {

SimPc *currentPc = nullptr;

// As Windows writes it for the headset's USB function.
QString interfacePath(const SimHeadset &headset)
{
    return QStringLiteral("\\\\?\\USB#VID_05C6&PID_903A#%1#{a5dcbf10-6530-11d2-901f-00c04fb951ed}")
        .arg(headset.serial);
}

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

void SimPc::usbChanged(const QString &interfacePath)
{
    const SimTimeline::OneAtATime oneAtATime = timeline.oneAtATime();
    if (usbListener_)
        usbListener_(interfacePath);
}

void SimPc::onUsbChange(std::function<void(const QString &)> listener)
{
    const SimTimeline::OneAtATime oneAtATime = timeline.oneAtATime();
    usbListener_ = std::move(listener);
}

void SimPc::setCable(const std::vector<SimHeadset> &headsets)
{
    const SimTimeline::OneAtATime oneAtATime = timeline.oneAtATime();
    std::vector<SimHeadset> before;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        before = std::exchange(cable_, headsets);
    }
    if (cableListener_)
        cableListener_(headsets);
    const auto isIn = [](const std::vector<SimHeadset> &list, const SimHeadset &headset) {
        return std::any_of(list.begin(), list.end(), [&headset](const SimHeadset &other) {
            return other.serial == headset.serial;
        });
    };
    for (const SimHeadset &headset : before) {
        if (!isIn(headsets, headset))
            usbChanged(interfacePath(headset));
    }
    for (const SimHeadset &headset : headsets) {
        if (!isIn(before, headset))
            usbChanged(interfacePath(headset));
    }
}

std::vector<SimHeadset> SimPc::cable() const
{
    timeline.settle();
    const std::lock_guard<std::mutex> lock(mutex_);
    return cable_;
}

void SimPc::onCable(std::function<void(const std::vector<SimHeadset> &)> listener)
{
    const SimTimeline::OneAtATime oneAtATime = timeline.oneAtATime();
    cableListener_ = std::move(listener);
    if (cableListener_)
        cableListener_(cable_);
}

void SimPc::personChooses(bool wired)
{
    const SimTimeline::OneAtATime oneAtATime = timeline.oneAtATime();
    if (personListener_)
        personListener_(wired);
}

void SimPc::onPerson(std::function<void(bool)> listener)
{
    const SimTimeline::OneAtATime oneAtATime = timeline.oneAtATime();
    personListener_ = std::move(listener);
}
