// "openvrpaths.vrpath", OpenVR's per-user list of the places it uses: our
// edits of its list of drivers. Everything else in it stays.
#pragma once

#include "base/json_document.h"

#include <QString>

// Any thread, no state. The file is shared with SteamVR and not locked.
namespace openvr_paths {

QString path(const QString &homeDir);

// --- edits of the document ---------------------------------------------------

// Whether any driver is registered.
bool hasDrivers(const JsonDocument &json);
// Leaves `driverPath` as the only driver. `runtimePath` becomes the first
// runtime, or stays when there is none.
void registerDriver(JsonDocument &json, const QString &driverPath, QString *runtimePath);
// False, and nothing done, when the document has no list of drivers.
bool clearDrivers(JsonDocument &json);

// --- edits of the file; every failure is logged and leaves the file ----------

// Without a log; false for a file that cannot be read.
bool hasDrivers(const QString &homeDir);
bool registerDriver(const QString &homeDir, const QString &driverPath, QString *runtimePath);
void clearDrivers(const QString &homeDir);

} // namespace openvr_paths
