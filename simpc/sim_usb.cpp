#include "simpc/sim_usb.h"

#include <algorithm>
#include <utility>

namespace {

// As Windows writes it for the headset's USB function.
QString interfacePath(const SimHeadset &headset)
{
    return QStringLiteral("\\\\?\\USB#VID_05C6&PID_903A#%1#{a5dcbf10-6530-11d2-901f-00c04fb951ed}")
        .arg(headset.serial);
}

bool isIn(const SimUsb::Cable &cable, const SimHeadset &headset)
{
    return std::any_of(cable.begin(), cable.end(), [&headset](const SimHeadset &other) {
        return other.serial == headset.serial;
    });
}

} // namespace

void SimUsb::setCable(const Cable &headsets)
{
    const SimTimeline::OneAtATime oneAtATime = timeline_.oneAtATime();
    Cable before;
    {
        const MutexLock lock(mutex_);
        before = std::exchange(cable_, headsets);
    }
    cableListener_.tell(headsets);
    for (const SimHeadset &headset : before) {
        if (!isIn(headsets, headset))
            changeInterface(interfacePath(headset));
    }
    for (const SimHeadset &headset : headsets) {
        if (!isIn(before, headset))
            changeInterface(interfacePath(headset));
    }
}

SimUsb::Cable SimUsb::cable() const
{
    timeline_.settle();
    const MutexLock lock(mutex_);
    return cable_;
}

void SimUsb::onCable(std::function<void(const Cable &)> listener)
{
    const SimTimeline::OneAtATime oneAtATime = timeline_.oneAtATime();
    cableListener_.set(std::move(listener));
    Cable now;
    {
        const MutexLock lock(mutex_);
        now = cable_;
    }
    cableListener_.tell(now);
}

void SimUsb::changeInterface(const QString &path)
{
    interfaceListener_.tell(path);
}

void SimUsb::onInterfaceChange(std::function<void(const QString &)> listener)
{
    interfaceListener_.set(std::move(listener));
}
