// What this process has in memory, in bytes; 0 where nobody counts
// it, and where a sanitizer adds its own.
#pragma once

#include <QtGlobal>

namespace memory {

// Given out by the heap and not given back.
qint64 inUse();

// The most that the system ever gave this process since forgetPeak().
qint64 peak();
void forgetPeak();

} // namespace memory
