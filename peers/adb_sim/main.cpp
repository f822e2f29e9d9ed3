#include "peers/adb_sim/call.h"
#include "peers/adb_sim/server.h"

#include <QCoreApplication>

#include <cstdio>

namespace {

constexpr int usualPort = 5037;

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    bool isSet = false;
    const int chosen = qEnvironmentVariableIntValue("ANDROID_ADB_SERVER_PORT", &isSet);
    const auto port = static_cast<quint16>(isSet ? chosen : usualPort);
    const State state;
    if (!state.isThere()) {
        std::fputs("ADB_SIM_FOLDER has to name a folder\n", stderr);
        return 2;
    }
    if (!arguments.contains(QStringLiteral("fork-server")))
        return runCall(state, arguments, port);
    Server server(state);
    return server.listen(port) ? QCoreApplication::exec() : 1;
}
