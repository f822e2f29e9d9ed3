#include "checks/facts.h"

void Facts::forgetPoll()
{
    power.reset();
    steamRunning.reset();
    steamVRRunning.reset();
    stereoOutput.reset();
    networkCategory.reset();
    adb.reset();
}
