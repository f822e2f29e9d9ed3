// The headset's own ports that lead to the PC.
#pragma once

#include <QObject>
#include <QString>
#include <QTcpServer>

#include <map>
#include <memory>

class QTcpSocket;

// They are ports of 127.0.0.2, so that they can have the same numbers as those
// of the PC, which listens on 127.0.0.1.
class Reverses : public QObject
{
    Q_OBJECT

public:
    // Both like "tcp:50000". Empty, or why not.
    QString add(const QString &own, const QString &pcs);
    bool remove(const QString &own);
    void removeAll();
    // A line each.
    QString list() const;

signals:
    // Something on the headset connects to the PC's port `pcs`. Whoever hears
    // of it takes the socket over.
    void connected(QTcpSocket *socket, const QString &pcs);

private:
    struct Entry
    {
        QString pcs;
        std::unique_ptr<QTcpServer> listener;
    };
    std::map<QString, Entry> entries_;
};
