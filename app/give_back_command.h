// What an uninstaller asks of the program: KOLM_Streaming_Assistant --give-back
#pragma once

#include <optional>

// With --give-back among the arguments, gives back what was changed outside the
// program's own folder, without a window, and returns the exit code of the process:
// 0 when everything that can be given back was, 1 when something could not be now
// (it may be tried again), 2 when the program runs, which would change it anew.
// Nothing without that argument. Before the application object is made.
std::optional<int> giveBackIfAsked(int &argc, char **argv);
