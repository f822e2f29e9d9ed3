// Installed memory. Synchronous; any thread.
#pragma once

#include <QtGlobal>

namespace memory {

// Total physical memory in bytes, as far as the system uses it; 0 when it does
// not say.
quint64 totalPhysical();

} // namespace memory
