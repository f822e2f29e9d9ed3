// Which version of the system this PC runs. Synchronous; any thread.
#pragma once

#include <QString>

namespace os_version {

// As the system's maker counts, for example "10" (also for Windows 11), "8.1"
// or "7sp1".
QString product();

} // namespace os_version
