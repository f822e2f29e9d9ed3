// What a run that broke leaves for the next one.
#pragma once

#include <QString>

#include <optional>

namespace crash_record {

// From now on a crash of this process, whose `version` is told, leaves its record in
// `folder`: "crash.txt", and "crash.dmp" where the system can. Once a process, on the
// GUI thread.
void arm(const QString &folder, const QString &version);

// The first line of the record that an earlier run left in `folder`; nothing when there
// is none. It is told once: the files are kept as "crash-last.txt" and "crash-last.dmp"
// in the place of earlier ones, and the log says so.
std::optional<QString> take(const QString &folder);

} // namespace crash_record
