#include "tests/hostile/attacked.h"

#include <QElapsedTimer>
#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpSocket>

#include <sys/socket.h>

namespace {

constexpr int limit = 20000;
constexpr quint16 port = 9932;

} // namespace

Attacker::Attacker() : socket_(std::make_unique<QTcpSocket>())
{
    socket_->setProxy(QNetworkProxy::NoProxy);
}

Attacker::~Attacker() = default;

bool Attacker::connect()
{
    socket_->connectToHost(QHostAddress(QHostAddress::LocalHost), port);
    if (!socket_->waitForConnected(limit)) {
        qWarning("no connection: %s", qPrintable(socket_->errorString()));
        return false;
    }
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    return true;
}

void Attacker::send(const QByteArray &bytes)
{
    socket_->write(bytes);
    while (socket_->bytesToWrite() > 0 && socket_->waitForBytesWritten(limit)) {
        // Who does not read at all is an attacker of another kind.
        socket_->readAll();
    }
}

void Attacker::send(const std::vector<QByteArray> &pieces)
{
    for (const QByteArray &piece : pieces)
        send(piece);
}

bool Attacker::isClosed()
{
    QElapsedTimer timer;
    timer.start();
    while (socket_->state() != QAbstractSocket::UnconnectedState && timer.elapsed() < limit) {
        socket_->readAll();
        socket_->waitForReadyRead(100);
    }
    return socket_->state() == QAbstractSocket::UnconnectedState;
}

void Attacker::reset()
{
    const linger none{1, 0};
    setsockopt(static_cast<int>(socket_->socketDescriptor()), SOL_SOCKET, SO_LINGER, &none,
               sizeof none);
    socket_->abort();
}

Attacked::Attacked(const QString &dir) : program(dir, "external-server")
{
    // No headset will connect: the limit for that would end it.
    program.environment.remove("SIMPC_LIMIT");
    started = program.start() && program.waitForOutput("ControlSocket::Startup Successfully bound");
}

bool Attacked::answers()
{
    QTcpSocket server;
    server.setProxy(QNetworkProxy::NoProxy);
    server.connectToHost(QHostAddress(QHostAddress::LocalHost), port);
    if (!server.waitForConnected(limit))
        return false;
    server.write("Hello\n");
    QByteArray seen;
    while (!seen.contains("HHHH, You can see me!\n")) {
        if (!server.waitForReadyRead(limit))
            return false;
        seen += server.readAll();
    }
    return true;
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
