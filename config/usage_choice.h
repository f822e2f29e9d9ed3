// Whether the user lets usage events be sent.
#pragma once

#include "base/file_io.h"

#include <QString>

namespace usage_choice {

// From "usage.json" in `dataDir`. On until the user has said something; then only
// if he said so, and not if the file cannot be understood. GUI thread.
bool isOn(const QString &dataDir);

// Keeps the choice. GUI thread.
WriteResult store(const QString &dataDir, bool on);

} // namespace usage_choice
