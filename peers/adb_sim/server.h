// adb's server: a process of its own that outlives the calls.
#pragma once

#include "peers/adb_sim/ports.h"
#include "peers/adb_sim/state.h"

#include <QTcpServer>

class QTcpSocket;

// Takes one call per connection, a JSON list of its arguments in one line, and
// answers with one line, a JSON object of "out", "err" and "code".
class Server : public QObject
{
    Q_OBJECT

public:
    explicit Server(const State &state);

    bool listen(quint16 port);

private:
    struct Reply
    {
        QString out;
        QString err;
        int code = 0;
    };

    void serve(QTcpSocket *socket);
    Reply reply(const QStringList &arguments);
    Reply forward(const QStringList &arguments);
    Reply reverse(const QStringList &arguments);
    // The only device, or why there is none to talk to.
    QString onlyDevice(QString *error) const;

    const State &state_;
    Ports ports_;
    QTcpServer listener_;
};
