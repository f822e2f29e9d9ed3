// The display devices of this PC and the drivers that it has for them, also
// those that are not in use. Synchronous, may take a while; any thread.
#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace display_drivers {

struct Driver
{
    QString manufacturer;
    quint64 version = 0; // four fields of 16 bits, the most significant first
};

struct Device
{
    bool listed = false; // whether the system could list the drivers
    std::vector<Driver> drivers;
};

// The devices that are present, in the system's order, without those that do
// not say which they are. Nothing when the system cannot be asked.
std::optional<std::vector<Device>> list();

} // namespace display_drivers
