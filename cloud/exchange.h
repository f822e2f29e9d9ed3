// One request of cloud::Network with its answer.
#pragma once

#include "base/background.h"
#include "cloud/transfer.h"

#include <QNetworkReply>

#include <memory>

// Begins at once, on a thread of its own. On the thread of its owner. How much of
// the answer is taken is the matter of Transfer; the size of the read buffer
// changes nothing.
class Exchange : public QNetworkReply
{
    Q_OBJECT

public:
    Exchange(QNetworkAccessManager::Operation operation, const QNetworkRequest &request,
             const QByteArray &body, const QNetworkProxy &proxy, QObject *parent);
    ~Exchange() override;

    void abort() override;
    qint64 bytesAvailable() const override;
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 size) override;
    void customEvent(QEvent *event) override;

private:
    void finish(NetworkError error, const QString &text);

    std::shared_ptr<Transfer> transfer_; // the other thread may outlive this
    Background background_;
    QByteArray buffer_;
    int taken_ = 0; // of the buffer
    qint64 received_ = 0;
    bool isHeadRead_ = false;
};
