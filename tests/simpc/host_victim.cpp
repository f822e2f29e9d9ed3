// A program on a simulated PC that brings the streaming server up and then
// waits to be killed: host_victim HOME SERVER PORT
#include "simpc/sim_host.h"

#include "base/manual_clock.h"

#include <QCoreApplication>

#include <unistd.h>

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4)
        return 2;
    QString error;
    const Scenario scenario =
        scenario::parse(R"({"title":"t","steam":{"running":true}})", "victim", &error);
    ManualClock clock;
    SimHost::Options options;
    options.clock = &clock;
    options.homeDir = arguments[1];
    options.settings.serverProgram = arguments[2];
    options.serverArguments = QStringList{"--port", arguments[3], "--give-up", "0"};
    SimHost host(scenario, options);
    host.start();
    host.pc().launches.start({"explorer", "steam://rungameid/250820", false});
    clock.advance(60000);
    for (;;)
        pause();
}
