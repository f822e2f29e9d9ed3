#include "tests/hostile/attacked.h"

#include "tests/link/peer.h"

#include <QElapsedTimer>

Attacked::Attacked(const QString &dir) : program(dir, "external-server")
{
    // No headset will connect: the limit for that would end it.
    program.environment.remove("SIMPC_LIMIT");
    started = program.start() && program.waitForOutput("ControlSocket::Startup Successfully bound");
}

bool Attacked::answers()
{
    Peer server;
    return server.connectTo(9932) && server.isAnswered();
}

int Attacked::restarts() const
{
    return program.log().count("[steam] restartSteamVR");
}

bool Attacked::knowsEvilHeadset() const
{
    for (const QString &file : {program.dataDir() + "/set.json", program.dataDir() + "/setting.inf",
                                program.work() + "/session.json"}) {
        if (program.read(file).contains(evilSerial))
            return true;
    }
    return program.log().contains(evilSerial);
}

qint64 Attacked::logOfNonsense() const
{
    qint64 size = 0;
    const QStringList lines = program.log().split("\r\n");
    for (const QString &line : lines) {
        // A line of the link begins with the name of what it heard, in quotes.
        if (line.contains("]:control port") || line.contains("]:\""))
            size += line.toUtf8().size() + 2;
    }
    return size;
}

qint64 Attacked::millisecondsToClose()
{
    QElapsedTimer timer;
    timer.start();
    return program.close() == 0 ? timer.elapsed() : -1;
}
