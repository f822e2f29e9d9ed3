#include "checks/facts.h"

void Facts::forgetPoll()
{
    stereoOutput.reset();
    networkCategory.reset();
    adb.reset();
}
