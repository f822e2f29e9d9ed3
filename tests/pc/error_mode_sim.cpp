#include "tests/pc/error_mode.h"

#include <sys/resource.h>

void beQuietAboutCrashes()
{
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
}

QString wrongAddress()
{
    return QStringLiteral("signal 11 at");
}

QString fullStack()
{
    return QStringLiteral("signal 11 at");
}

bool dumpsAreWritten()
{
    return false;
}
