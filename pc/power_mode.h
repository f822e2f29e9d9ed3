// How much of the processor this process is worth to the system.
#pragma once

namespace power_mode {

// Asks for the efficient mode: slower, with less energy and heat, which a game can
// use instead; or takes that wish back. Systems that know no such mode, before
// Windows 10, do nothing. False when the system has not taken the wish. Any thread.
bool setEfficient(bool efficient);

} // namespace power_mode
