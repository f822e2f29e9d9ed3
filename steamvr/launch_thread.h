// Where the launch of Steam takes its time.
#pragma once

#include <functional>

namespace launch_thread {

// Runs `work` on a thread of its own. One launch at a time: the last one is over, or
// about to be, and is waited for. False when there is no thread to be had. Any thread,
// one at a time.
bool run(std::function<void()> work);

// Tells the work to give up, and waits for it. The application does so at its end; the
// next work goes on as ever.
void end();
// Whether the work is to give up. Any thread.
bool isToEnd();

} // namespace launch_thread
