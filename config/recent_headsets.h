// The list of the serials of every headset that has ever connected,
// "setting.inf" in the program's data folder: the serials joined by ";".
#pragma once

#include "base/file_io.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace recent_headsets {

// The stored serials without empty ones; an empty list when there is no file.
QStringList load(const QString &dataDir);
// The same; nothing when somebody keeps the file from being read.
[[nodiscard]] std::optional<QStringList> loadUnlessHeld(const QString &dataDir);

// Stores the list; an empty list leaves an empty file.
WriteResult save(const QString &dataDir, const QStringList &serials);

// Stores the list together with what is stored already, which comes behind it.
// OpenFailed, and nothing done, while that cannot be read.
WriteResult add(const QString &dataDir, const QStringList &serials);

} // namespace recent_headsets
