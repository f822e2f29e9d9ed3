// Whether the graphics driver is new enough. Pure, but for the log.
#pragma once

#include "pc/display_drivers.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace driver_rules {

// "31.0.15.5176"
QString versionText(quint64 version);

// The versions of NVIDIA's drivers among those of the devices, in their order;
// logs every driver.
QStringList nvidiaVersions(const std::optional<std::vector<display_drivers::Device>> &devices);

// The same without a line in the log.
QStringList nvidiaVersionsOf(const std::optional<std::vector<display_drivers::Device>> &devices);

// Whether there are NVIDIA drivers and all of them are older than release
// 551.76.
bool needUpdate(const QStringList &nvidiaVersions);

} // namespace driver_rules
