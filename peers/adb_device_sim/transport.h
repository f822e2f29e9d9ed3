// A connection from adb's server to the headset.
#pragma once

#include "peers/adb_device_sim/message.h"
#include "peers/adb_device_sim/reverses.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>

class QTcpSocket;
class Stream;

// Everything that was asked of the headset through it ends with it.
class Transport : public QObject
{
    Q_OBJECT

public:
    using Tell = std::function<void(const QString &)>;

    // Takes the socket over. `tell` is told every request in a line.
    Transport(QTcpSocket *socket, Tell tell);
    ~Transport() override;

signals:
    void ended();

private:
    void read();
    void handle(const Message &message);
    void send(const Message &message);
    Stream *add();
    void drop(quint32 id);
    void open(quint32 otherId, const QString &service);
    // What the headset says to `service`, and whether it has done so then;
    // nothing when there is no such service.
    struct Answer
    {
        QByteArray text;
        bool isAll = true;
    };
    std::optional<Answer> answer(const QString &service);
    QByteArray reverse(const QString &request);
    void openOnPc(QTcpSocket *socket, const QString &port);

    QTcpSocket *socket_;
    const Tell tell_;
    MessageReader reader_;
    Reverses reverses_;
    std::map<quint32, std::unique_ptr<Stream>> streams_;
    quint32 lastId_ = 0;
};
