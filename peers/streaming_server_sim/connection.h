// The way to the assistant: bytes, lines and packets, no meaning.
#pragma once

#include "peers/streaming_server_sim/options.h"
#include "peers/streaming_server_sim/record.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QTcpSocket>
#include <QTimer>

// Keeps a connection to 127.0.0.1, connecting anew as long as that has a
// chance. Lives on the main thread.
class Connection : public QObject
{
    Q_OBJECT

public:
    Connection(const Options &options, Record &record);
    ~Connection() override;

    void open();
    bool isOpen() const { return socket_.state() == QAbstractSocket::ConnectedState; }

    // Sends a line now, without its end; dropped while there is no connection.
    void send(const QByteArray &line);
    // Sends a reply, now or together with later ones.
    void reply(const QByteArray &line);

signals:
    void opened();
    // One text of the assistant, without the NUL that ended it.
    void received(const QByteArray &text);
    // There will be no connection any more.
    void ended();

private:
    void connected();
    void lost();
    void retry();
    void read();
    void transmit(const QByteArray &bytes);
    void sendPiece();

    const Options options_;
    Record &record_;
    QTcpSocket socket_;
    QTimer retryTimer_;
    QTimer pieceTimer_;
    QElapsedTimer alone_; // since the last connection
    bool wasOpen_ = false;
    bool saidAlone_ = false; // that nobody listens
    QByteArray incoming_;
    QByteArray outgoing_;        // waits to go out piece by piece
    QList<QByteArray> heldBack_; // replies that wait for company
};
