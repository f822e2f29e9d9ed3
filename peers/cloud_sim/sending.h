// One answer on its way.
#pragma once

#include "peers/cloud_sim/answer.h"

#include <QObject>
#include <QTimer>

class QSslSocket;

// Writes the answer as fast as it is taken, and keeps little of it in memory.
class Sending : public QObject
{
    Q_OBJECT

public:
    // `answer` has its real body; the socket outlives this.
    Sending(Answer answer, QSslSocket *socket, QObject *parent);

    void start();

signals:
    // The answer is out; `keep`: further requests may come on the connection.
    void finished(bool keep);

private:
    void writeOn();
    void writePiece(const QByteArray &piece);
    void end();
    QByteArray head() const;
    QByteArray part(qint64 from, qint64 size) const;

    const Answer answer_;
    QSslSocket *socket_;
    QTimer gap_;
    qint64 size_;     // of the whole body
    qint64 sent_ = 0; // of the body
    bool waits_ = false;
    bool ended_ = false;
};
