// The program as it is when another copy of it waits and wants that to be known.
#pragma once

namespace wait_notice {
struct Request;
}

// Shows the wait until the user has chosen or the process that started this one has
// gone. Returns the exit code. Asks nothing of the PC, and writes nothing.
int runWaitNotice(int argc, char **argv, const wait_notice::Request &request);
