#include "app/host.h"

struct Host::Private
{
};

Host::Host() = default;

Host::~Host() = default;

void Host::attach(QQmlApplicationEngine &, const ConnectionRoad *) {}

std::optional<QString> Host::cloudHost() const
{
    return std::nullopt;
}

int Host::exitCode(int loopResult) const
{
    return loopResult;
}
