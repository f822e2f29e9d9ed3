// One request on its way to a server, and the answer on its way back.
#pragma once

#include "base/mutex.h"

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QSslConfiguration>
#include <QString>
#include <QUrl>

class AnswerReader;
class QEventLoop;
class QObject;
class QSslSocket;

// Sends its request once, on a connection of its own, and never again, whatever
// happens to that. Names are looked up on its own thread: Qt's would have to answer
// before the application could end. Of an answer it holds a head of bounded length and little of
// the body: it goes on when that has been taken. More than `longestBody` is given up.
class Transfer
{
public:
    struct Order
    {
        QUrl url; // https or http
        QByteArray head;
        QByteArray body;
        QNetworkProxy proxy = QNetworkProxy::NoProxy;
        QSslConfiguration tls = {};
        qint64 longestBody = 0; // bytes
    };
    // What has come since the last time.
    struct News
    {
        int status = 0; // 0: the head is not there yet
        QByteArray reason;
        qint64 length = -1; // of the body; -1: not known
        QByteArray body;
        bool isOver = false;
        QNetworkReply::NetworkError error = QNetworkReply::NoError;
        QString errorText;
    };

    // `listener` gets an event of type QEvent::User when there is news. It calls
    // cancel() before it goes.
    Transfer(Order order, QObject *listener);

    // Over plain HTTP a proxy for HTTP is not asked for a way through, but for the
    // answer itself: the first line of the head then names the whole address.
    static bool asksProxy(const QUrl &url, const QNetworkProxy &proxy);

    // The whole course of it. On a thread of its own.
    void run();

    // Any thread.
    News take();
    // Ends run() soon. Nobody hears of it any more.
    void cancel();

private:
    void begin(QSslSocket &socket);
    void connectNext(QSslSocket &socket);
    bool isThroughProxy() const;
    void read(QSslSocket &socket, AnswerReader &reader);
    void fail(QSslSocket &socket, AnswerReader &reader, int socketError);
    void tellHead(const AnswerReader &reader) REQUIRES(mutex_);
    void finish(QNetworkReply::NetworkError error, const QString &text);
    void tell() REQUIRES(mutex_);
    void leave() REQUIRES(mutex_);
    bool isOver() EXCLUDES(mutex_);

    const Order order_;
    // Of run() alone.
    QList<QHostAddress> addresses_; // not tried yet; none once one has answered
    qint64 bodySize_ = 0;

    Mutex mutex_;
    Condition taken_; // what had come, or nobody wants it any more
    QObject *listener_ GUARDED_BY(mutex_);
    QEventLoop *loop_ GUARDED_BY(mutex_) = nullptr; // of run()
    News news_ GUARDED_BY(mutex_);
    bool isTold_ GUARDED_BY(mutex_) = false;
    bool isEnded_ GUARDED_BY(mutex_) = false;
};
