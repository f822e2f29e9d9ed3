// The power line of this PC. Synchronous; any thread.
#pragma once

#include <optional>

namespace power {

enum class AcLine { Offline = 0, Online = 1, Unknown = 255 };

// Nothing when the system does not answer.
std::optional<AcLine> acLine();

} // namespace power
