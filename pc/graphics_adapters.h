// The graphics adapters of this PC. Synchronous; any thread.
#pragma once

#include <QString>

#include <vector>

namespace graphics_adapters {

struct Adapter
{
    quint32 vendorId = 0; // PCI identifiers
    quint32 deviceId = 0;
    QString name;
    quint64 dedicatedMemory = 0; // bytes
};

// In the system's order, without those that do not describe themselves. Empty
// when the system cannot be asked.
std::vector<Adapter> list();

} // namespace graphics_adapters
