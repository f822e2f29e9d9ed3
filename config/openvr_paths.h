// "openvrpaths.vrpath", OpenVR's per-user list of the places it uses: our
// edits of its list of drivers. Everything else in it stays.
#pragma once

#include "base/json_document.h"
#include "config/outside_record.h"

#include <QString>

#include <optional>

// Any thread, no state. The file is shared with SteamVR and not locked.
namespace openvr_paths {

QString path(const QString &homeDir);

// --- edits of the document ---------------------------------------------------

// Whether any driver is registered.
bool hasDrivers(const JsonDocument &json);
// Leaves `driverPath` as the only driver. Returns the first runtime's folder, if
// there is a runtime.
std::optional<QString> registerDriver(JsonDocument &json, const QString &driverPath);
// False, and nothing done, when the document has no list of drivers.
bool clearDrivers(JsonDocument &json);

// --- edits of the file; every failure is logged and leaves the file ----------

// Without a log; false for a file that cannot be read.
bool hasDrivers(const QString &homeDir);

// What keeps a driver from being registered: there is no list, it cannot be read,
// it is no JSON, it cannot be opened for writing, or what was to be written did not
// get there.
enum class Problem { None, Missing, Unreadable, NoJson, NotWritable, NotWritten };

struct Registration
{
    Problem problem = Problem::None;
    // As above; known also when the file could not be written.
    std::optional<QString> runtimePath;
};
// Waits for a moment while somebody holds the list.
[[nodiscard]] Registration registerDriver(const QString &homeDir, const QString &driverPath,
                                          const OutsideRecord &record = {});

// What is said when it fails: everything at the first attempt, nothing when it
// is tried again.
enum class Attempt { First, Again };
// False when drivers stay registered only because somebody holds the file:
// another attempt may do it.
bool clearDrivers(const QString &homeDir, Attempt attempt = Attempt::First,
                  const OutsideRecord &record = {});

} // namespace openvr_paths
