// Loaded into the program before the C library: a name server that never answers.
// Leaves the file that SLOW_NAMES_ASKED names when it is asked.
#include <cstdlib>
#include <fstream>

#include <netdb.h>
#include <unistd.h>

extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char *, const char *,
                                                                  const addrinfo *, addrinfo **)
{
    if (const char *file = std::getenv("SLOW_NAMES_ASKED"))
        std::ofstream(file) << "asked\n";
    for (;;)
        pause();
}
