#include "peers/adb_device_sim/reverses.h"

#include <QTcpSocket>

QString Reverses::add(const QString &own, const QString &pcs)
{
    entries_.erase(own);
    Entry entry = {pcs, std::make_unique<QTcpServer>()};
    QTcpServer *listener = entry.listener.get();
    if (!listener->listen(QHostAddress(QStringLiteral("127.0.0.2")),
                          own.section(':', 1).toUShort()))
        return listener->errorString();
    connect(listener, &QTcpServer::newConnection, this, [this, listener, pcs] {
        while (QTcpSocket *socket = listener->nextPendingConnection())
            emit connected(socket, pcs);
    });
    entries_[own] = std::move(entry);
    return {};
}

bool Reverses::remove(const QString &own)
{
    return entries_.erase(own) > 0;
}

void Reverses::removeAll()
{
    entries_.clear();
}

QString Reverses::list() const
{
    QString lines;
    for (const auto &[own, entry] : entries_)
        lines += QStringLiteral("host-1 %1 %2\n").arg(own, entry.pcs);
    return lines;
}
