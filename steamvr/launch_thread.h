// Where the launch of Steam takes its time.
#pragma once

#include <functional>

namespace launch_thread {

// Runs `work` on a thread of its own. One launch at a time: the last one is over, or
// about to be, and is waited for. The application waits for it at its end, too. False
// when there is no thread to be had. Any thread, one at a time.
bool run(std::function<void()> work);

} // namespace launch_thread
