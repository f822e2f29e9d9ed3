#include "peers/adb_sim/server.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QTimer>

namespace {

constexpr int lookInterval = 50; // ms, for devices that went away

} // namespace

Server::Server(const State &state) : state_(state), ports_(state)
{
    connect(&listener_, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = listener_.nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
    auto *look = new QTimer(this);
    connect(look, &QTimer::timeout, this, [this] {
        // With its folder the world that this server belongs to has ended.
        if (state_.isThere())
            ports_.settle();
        else
            QCoreApplication::quit();
    });
    look->start(lookInterval);
}

bool Server::listen(quint16 port)
{
    return listener_.listen(QHostAddress::LocalHost, port);
}

void Server::serve(QTcpSocket *socket)
{
    if (!socket->canReadLine())
        return;
    QStringList arguments;
    for (const QJsonValue &argument : QJsonDocument::fromJson(socket->readLine()).array())
        arguments << argument.toString();
    ports_.settle();
    const Reply made = reply(arguments);
    const QJsonObject json = {{QStringLiteral("out"), made.out},
                              {QStringLiteral("err"), made.err},
                              {QStringLiteral("code"), made.code}};
    socket->write(QJsonDocument(json).toJson(QJsonDocument::Compact) + '\n');
    socket->flush();
    socket->disconnectFromHost();
    if (arguments == QStringList{QStringLiteral("kill-server")}) {
        socket->waitForDisconnected(1000);
        QCoreApplication::quit();
    }
}

Server::Reply Server::reply(const QStringList &arguments)
{
    const QString command = arguments.value(0);
    if (command == QLatin1String("start-server") || command == QLatin1String("kill-server"))
        return {};
    if (command == QLatin1String("devices")) {
        QString list = QStringLiteral("List of devices attached\n");
        for (const Device &device : state_.devices())
            list += device.serial + '\t' + device.state + '\n';
        return {list + '\n', {}, 0};
    }
    if (command == QLatin1String("forward"))
        return forward(arguments);
    if (command == QLatin1String("reverse"))
        return reverse(arguments);
    return {{}, QStringLiteral("adb: unknown command %1\n").arg(command), 1};
}

Server::Reply Server::forward(const QStringList &arguments)
{
    const QString what = arguments.value(1);
    if (what == QLatin1String("--list"))
        return {ports_.forwards() + '\n', {}, 0};
    if (what == QLatin1String("--remove-all")) {
        ports_.removeForwards();
        return {};
    }
    QString error;
    if (what == QLatin1String("--remove")) {
        error = ports_.removeForward(arguments.value(2));
    } else {
        const QString serial = onlyDevice(&error);
        if (error.isEmpty())
            error = ports_.forward(serial, what, arguments.value(2));
        if (error.isEmpty())
            return {what.section(':', 1) + '\n', {}, 0};
    }
    if (error.isEmpty())
        return {};
    return {{}, QStringLiteral("adb: error: %1\n").arg(error), 1};
}

Server::Reply Server::reverse(const QStringList &arguments)
{
    QString error;
    const QString serial = onlyDevice(&error);
    if (!error.isEmpty())
        return {{}, QStringLiteral("adb: error: %1\n").arg(error), 1};
    const QString what = arguments.value(1);
    if (what == QLatin1String("--list"))
        return {ports_.reverses(serial) + '\n', {}, 0};
    if (what == QLatin1String("--remove-all")) {
        ports_.removeReverses(serial);
        return {};
    }
    ports_.reverse(serial, what, arguments.value(2));
    return {what.section(':', 1) + '\n', {}, 0};
}

QString Server::onlyDevice(QString *error) const
{
    const std::vector<Device> devices = state_.devices();
    if (devices.empty())
        *error = QStringLiteral("no devices/emulators found");
    else if (devices.size() > 1)
        *error = QStringLiteral("more than one device/emulator");
    else if (devices.front().state != QLatin1String("device"))
        *error = QStringLiteral("device ") + devices.front().state;
    else
        return devices.front().serial;
    return {};
}
