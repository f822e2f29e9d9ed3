// The program on a simulated PC.
#pragma once

#include "app/surroundings.h"

#include <memory>

// Brings the PC that the environment asks for, closes the program as its close
// button does on SIGINT and SIGTERM, and runs demonstrations (see
// demonstration/README.md). Once a process; GUI thread.
class SimulatedSurroundings final : public Surroundings
{
public:
    SimulatedSurroundings();
    // Ends the streaming server. The PC goes on answering: it is asked until
    // the last objects of the program have ended.
    ~SimulatedSurroundings() override;

    [[nodiscard]] std::optional<int> begin() override;
    void onApplication() override;
    void onPublished(QQmlApplicationEngine &engine) override;
    void attach(QQmlApplicationEngine &engine, const ConnectionStages *stages) override;
    std::optional<QString> cloudHost() const override;
    int exitCode(int loopResult) const override;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
