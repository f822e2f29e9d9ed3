#include "tests/support/used_up_threads.h"

// Windows has no such limit.
struct UsedUpThreads::Private
{
};

UsedUpThreads::UsedUpThreads() = default;
UsedUpThreads::~UsedUpThreads() = default;

bool UsedUpThreads::isSo() const
{
    return false;
}
