#include "demonstration/wishes.h"

#include <QtGlobal>

Wishes Wishes::fromEnvironment()
{
    Wishes wishes;
    const QString progress = qEnvironmentVariable("SIMPC_PROGRESS");
    wishes.printProgress = !progress.isEmpty() && progress != QLatin1String("0");
    wishes.screenshot = qEnvironmentVariable("SIMPC_SCREENSHOT");
    wishes.untilConnected = qEnvironmentVariable("SIMPC_UNTIL") == QLatin1String("connected");
    wishes.limitSeconds = qEnvironmentVariableIntValue("SIMPC_LIMIT");
    wishes.scripted = qEnvironmentVariableIntValue("SIMPC_DIRECTED") != 0;
    wishes.noThreads = qEnvironmentVariableIntValue("SIMPC_NO_THREADS") != 0;
    return wishes;
}
