// What Direct3D 11 can do on the default adapter. Synchronous; any thread.
#pragma once

#include <QtGlobal>

#include <vector>

namespace feature_level {

// Result code of a call that does not take one of its arguments, for example a
// feature level that the system is too old to know.
constexpr quint32 invalidArgument = 0x80070057;

struct Answer
{
    quint32 result = 0; // the system's result code
    quint32 level = 0;  // for example 0xb000 for 11_0; 0 when none was told
};

// Makes a hardware device with the first of `levels` that it can have and gives
// it back at once.
Answer probe(const std::vector<quint32> &levels);

} // namespace feature_level
