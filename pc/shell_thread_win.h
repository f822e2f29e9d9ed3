// Where the shell is called.
#pragma once

#include <functional>

namespace shell_thread {

// Carries `work` out on a thread of its own, made ready for the shell, and waits for it.
// False, and nothing is done, when there is no thread to be had.
//
// The shell may dispatch the messages of the thread that calls it. On the caller's
// thread that would carry out clicks in the middle of whatever the caller is at, and
// under its locks. Any thread.
bool run(const std::function<void()> &work);

} // namespace shell_thread
