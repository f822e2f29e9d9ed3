#include "tests/cloud/memory.h"

qint64 memory::inUse()
{
    return 0;
}

qint64 memory::peak()
{
    return 0;
}

void memory::forgetPeak() {}
