// The list of the serials of every headset that has ever connected,
// "setting.inf" in the program's data folder: the serials joined by ";".
#pragma once

#include <QString>
#include <QStringList>

namespace recent_headsets {

// The stored serials without empty ones; an empty list when there is no file.
// `held` becomes true when there is one that somebody keeps from being read.
QStringList load(const QString &dataDir, bool *held = nullptr);

// Stores the list; an empty list leaves an empty file. Failures are ignored.
void save(const QString &dataDir, const QStringList &serials);

// Stores the list together with what is stored already, which comes behind it.
// Does nothing while that cannot be read.
void add(const QString &dataDir, const QStringList &serials);

} // namespace recent_headsets
