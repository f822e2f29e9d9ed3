// The stand-in cloud on its port.
#pragma once

#include "peers/cloud_sim/answer.h"
#include "peers/cloud_sim/certificate.h"
#include "peers/cloud_sim/store.h"

#include <QByteArray>
#include <QMap>
#include <QTcpServer>

class QSslSocket;

class Server : public QTcpServer
{
    Q_OBJECT

public:
    Server(const Identity &identity, const Answers &answers, const QString &store);

protected:
    void incomingConnection(qintptr handle) override;

private:
    void read(QSslSocket *socket, QByteArray *bytes);
    void answer(QSslSocket *socket, QByteArray *bytes, const Request &request);
    Answer answerTo(const Request &request);

    const Identity identity_;
    const Answers answers_;
    Store store_;
    QMap<QString, int> asked_; // how often, by tag and service
};
