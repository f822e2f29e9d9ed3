#include "app/host.h"

struct Host::Private
{
};

Host::Host() = default;

Host::~Host() = default;

void Host::attach(QQmlApplicationEngine &, const ConnectionRoad *) {}

int Host::exitCode(int loopResult) const
{
    return loopResult;
}
