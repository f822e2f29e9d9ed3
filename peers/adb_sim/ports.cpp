#include "peers/adb_sim/ports.h"

#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>

namespace {

template <typename List, typename Condition>
void removeWhere(List *list, Condition condition)
{
    list->erase(std::remove_if(list->begin(), list->end(), condition), list->end());
}

} // namespace

Ports::Ports(const State &state, QObject *parent) : QObject(parent), state_(state) {}

Ports::~Ports() = default;

QString Ports::forward(const QString &serial, const QString &local, const QString &remote)
{
    for (Forward &known : forwards_) {
        if (known.local == local) {
            known.serial = serial;
            known.remote = remote;
            return {};
        }
    }
    Forward added = {serial, local, remote, std::make_unique<QTcpServer>()};
    QTcpServer *listener = added.listener.get();
    bool isNumber = false;
    const quint16 port = local.section(':', 1).toUShort(&isNumber);
    if (!local.startsWith(QLatin1String("tcp:")) || !isNumber)
        return QStringLiteral("unknown socket specification '%1'").arg(local);
    if (!listener->listen(QHostAddress::LocalHost, port))
        return QStringLiteral("cannot bind listener: %1").arg(listener->errorString());
    // What is accepted belongs to the listener and ends with it.
    connect(listener, &QTcpServer::newConnection, listener, [this, listener] {
        while (QTcpSocket *socket = listener->nextPendingConnection()) {
            socket->write("HEADSET\n");
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
        settle();
    });
    forwards_.push_back(std::move(added));
    return {};
}

QString Ports::removeForward(const QString &local)
{
    const std::size_t before = forwards_.size();
    removeWhere(&forwards_, [&local](const Forward &known) { return known.local == local; });
    return forwards_.size() < before ? QString()
                                     : QStringLiteral("listener '%1' not found").arg(local);
}

void Ports::removeForwards()
{
    forwards_.clear();
}

void Ports::reverse(const QString &serial, const QString &remote, const QString &local)
{
    removeWhere(&reverses_, [&](const Reverse &known) {
        return known.serial == serial && known.remote == remote;
    });
    reverses_.push_back({serial, remote, local});
}

void Ports::removeReverses(const QString &serial)
{
    removeWhere(&reverses_, [&serial](const Reverse &known) { return known.serial == serial; });
}

QString Ports::forwards() const
{
    QString list;
    for (const Forward &known : forwards_)
        list += QStringLiteral("%1 %2 %3\n").arg(known.serial, known.local, known.remote);
    return list;
}

QString Ports::reverses(const QString &serial) const
{
    QString list;
    for (const Reverse &known : reverses_) {
        if (known.serial == serial)
            list += QStringLiteral("UsbFfs %1 %2\n").arg(known.remote, known.local);
    }
    return list;
}

void Ports::settle()
{
    const std::vector<Device> devices = state_.devices();
    const auto isGone = [&devices](const auto &known) {
        return std::none_of(devices.begin(), devices.end(), [&known](const Device &device) {
            return device.serial == known.serial && device.state == QLatin1String("device");
        });
    };
    removeWhere(&forwards_, isGone);
    removeWhere(&reverses_, isGone);
}
