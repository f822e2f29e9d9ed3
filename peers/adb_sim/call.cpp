#include "peers/adb_sim/call.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTcpSocket>
#include <QThread>

#include <cstdio>

namespace {

constexpr int connectLimit = 1000; // ms
constexpr int answerLimit = 10000; // ms
constexpr int startTries = 200;
constexpr unsigned long startInterval = 25; // ms

void print(const QString &text, FILE *stream)
{
    std::fputs(text.toUtf8().constData(), stream);
    std::fflush(stream);
}

bool reach(QTcpSocket *socket, quint16 port)
{
    socket->connectToHost(QStringLiteral("127.0.0.1"), port);
    return socket->waitForConnected(connectLimit);
}

// As adb names its server's process; the output goes nowhere, or whoever waits
// for the end of this call's output would wait for the server's.
bool startServer(QTcpSocket *socket, quint16 port)
{
    print(QStringLiteral("* daemon not running; starting now at tcp:%1\n").arg(port), stderr);
    QProcess server;
    server.setProgram(QCoreApplication::applicationFilePath());
    server.setArguments({QStringLiteral("-L"), QStringLiteral("tcp:%1").arg(port),
                         QStringLiteral("fork-server"), QStringLiteral("server")});
    server.setStandardInputFile(QProcess::nullDevice());
    server.setStandardOutputFile(QProcess::nullDevice());
    server.setStandardErrorFile(QProcess::nullDevice());
    if (!server.startDetached())
        return false;
    for (int i = 0; i < startTries; ++i) {
        if (reach(socket, port)) {
            print(QStringLiteral("* daemon started successfully\n"), stderr);
            return true;
        }
        QThread::msleep(startInterval);
    }
    return false;
}

} // namespace

int runCall(const State &state, const QStringList &arguments, quint16 port)
{
    state.record(arguments);
    while (state.hangs())
        QThread::msleep(startInterval);
    if (const std::optional<QByteArray> recorded = state.recorded(arguments)) {
        print(QString::fromUtf8(*recorded), stdout);
        return 0;
    }
    const QString command = arguments.value(0);
    if (command == QLatin1String("--version") || command == QLatin1String("version")) {
        print(QStringLiteral("Android Debug Bridge version 1.0.41\nVersion 29.0.6-stand-in\n"
                             "Installed as %1\n")
                  .arg(QCoreApplication::applicationFilePath()),
              stdout);
        return 0;
    }
    QTcpSocket socket;
    if (!reach(&socket, port)) {
        if (command == QLatin1String("kill-server"))
            return 0;
        if (!startServer(&socket, port)) {
            print(QStringLiteral("adb: cannot connect to daemon\n"), stderr);
            return 1;
        }
    }
    socket.write(
        QJsonDocument(QJsonArray::fromStringList(arguments)).toJson(QJsonDocument::Compact) + '\n');
    QByteArray line;
    while (!line.endsWith('\n') && socket.waitForReadyRead(answerLimit))
        line += socket.readAll();
    const QJsonObject reply = QJsonDocument::fromJson(line).object();
    print(reply.value(QStringLiteral("out")).toString(), stdout);
    print(reply.value(QStringLiteral("err")).toString(), stderr);
    return reply.value(QStringLiteral("code")).toInt(1);
}
