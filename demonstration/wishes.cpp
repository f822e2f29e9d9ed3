#include "demonstration/wishes.h"

#include <QtGlobal>

Wishes Wishes::fromEnvironment()
{
    Wishes wishes;
    const QString road = qEnvironmentVariable("SIMPC_ROAD");
    wishes.printRoad = !road.isEmpty() && road != QLatin1String("0");
    wishes.screenshot = qEnvironmentVariable("SIMPC_SCREENSHOT");
    wishes.untilConnected = qEnvironmentVariable("SIMPC_UNTIL") == QLatin1String("connected");
    wishes.limitSeconds = qEnvironmentVariableIntValue("SIMPC_LIMIT");
    wishes.scripted = qEnvironmentVariableIntValue("SIMPC_DIRECTED") != 0;
    return wishes;
}
