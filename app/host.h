// What surrounds the program besides Windows itself.
#pragma once

#include <QString>

#include <memory>
#include <optional>

class ConnectionRoad;
class QQmlApplicationEngine;

// On Windows there is nothing to do. Elsewhere the host brings the simulated
// PC that the environment variable SIMPC_SCENARIO names, closes the program as
// its close button does on SIGINT and SIGTERM, and runs demonstrations (see
// simpc/README.md). Made first and destroyed last; GUI thread.
class Host
{
public:
    Host();
    ~Host();

    Host(const Host &) = delete;
    Host &operator=(const Host &) = delete;

    // Once the windows are there. `road` is null in a second copy.
    void attach(QQmlApplicationEngine &engine, const ConnectionRoad *road);

    // Where the vendor cloud is, if the surroundings have one of their own.
    std::optional<QString> cloudHost() const;

    // The exit code of the process, given the event loop's.
    int exitCode(int loopResult) const;

private:
    struct Private;
    std::shared_ptr<Private> d;
};
