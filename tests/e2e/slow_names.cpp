// Loaded into the program before the C library: a name server that never answers, as
// long as anybody would wait. Leaves the file that the variable SLOW_NAMES_ASKED names
// when it is asked.
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

#include <netdb.h>

extern "C" __attribute__((visibility("default"))) int getaddrinfo(const char *, const char *,
                                                                  const addrinfo *, addrinfo **)
{
    if (const char *file = std::getenv("SLOW_NAMES_ASKED"))
        std::ofstream(file) << "asked\n";
    std::this_thread::sleep_for(std::chrono::minutes(2));
    return EAI_AGAIN;
}
