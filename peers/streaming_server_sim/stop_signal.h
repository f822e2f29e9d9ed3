// Being asked to end from outside.
#pragma once

#include <functional>

// Calls `stop`, on some other thread and perhaps more than once, when the
// process is told to end. To be called once, before any other thread is
// started; `stop` must stay valid until the process ends.
void onStopRequest(std::function<void()> stop);
