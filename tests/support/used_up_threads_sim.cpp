#include "tests/support/used_up_threads.h"

#include <system_error>
#include <thread>

#include <sys/resource.h>
#include <unistd.h>

namespace {

constexpr uid_t nobody = 65534;

bool isRefused()
{
    try {
        std::thread([] {}).join();
    } catch (const std::system_error &) {
        return true;
    }
    return false;
}

} // namespace

struct UsedUpThreads::Private
{
    rlimit before{};
    bool wasRoot = false;
    bool isSo = false;
};

// The limit counts the threads of a user, and root has none.
UsedUpThreads::UsedUpThreads() : d(std::make_unique<Private>())
{
    getrlimit(RLIMIT_NPROC, &d->before);
    d->wasRoot = getuid() == 0 && setresuid(nobody, nobody, 0) == 0;
    const rlimit none = {0, d->before.rlim_max};
    d->isSo = setrlimit(RLIMIT_NPROC, &none) == 0 && isRefused();
}

UsedUpThreads::~UsedUpThreads()
{
    setrlimit(RLIMIT_NPROC, &d->before);
    if (d->wasRoot && setresuid(0, 0, 0) != 0)
        std::terminate(); // nothing that follows would be true
}

bool UsedUpThreads::isSo() const
{
    return d->isSo;
}
