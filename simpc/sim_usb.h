// The USB cable of a simulated PC.
#pragma once

#include "base/mutex.h"
#include "simpc/sim_listener.h"

#include <QString>

#include <functional>
#include <vector>

// A headset on the cable.
struct SimHeadset
{
    QString serial;
    QString state = QStringLiteral("device"); // as adb calls it
};

// Any thread.
class SimUsb
{
public:
    using Cable = std::vector<SimHeadset>;

    explicit SimUsb(const SimTimeline &timeline)
        : timeline_(timeline), cableListener_(timeline), interfaceListener_(timeline)
    {
    }

    SimUsb(const SimUsb &) = delete;
    SimUsb &operator=(const SimUsb &) = delete;

    // What is on the cable. Every headset that comes or goes is told of by
    // changeInterface(); the listener of onCable() is told the new content
    // before that.
    void setCable(const Cable &headsets);
    Cable cable() const;
    // Told at once what is there already.
    void onCable(std::function<void(const Cable &)> listener);

    // A device interface arrives at the PC or leaves it. The listener is told
    // its path.
    void changeInterface(const QString &path);
    void onInterfaceChange(std::function<void(const QString &path)> listener);

private:
    const SimTimeline &timeline_;
    mutable Mutex mutex_; // never held while calling back
    Cable cable_ GUARDED_BY(mutex_);
    SimListener<Cable> cableListener_;
    SimListener<QString> interfaceListener_;
};
