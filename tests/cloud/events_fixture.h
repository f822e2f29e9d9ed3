// Usage events on their way to the stand-in cloud.
#pragma once

#include "base/manual_clock.h"
#include "cloud/http_manager.h"
#include "tests/cloud/cloud_test.h"

#include <QNetworkReply>

#include <algorithm>

inline constexpr int tick = 600000;        // ms
inline constexpr int flushLimit = 2000;    // ms
inline constexpr int answerLimit = 300000; // ms

// A record as it stands in a batch.
inline QByteArray recordText(const QByteArray &id, const QByteArray &extra, qint64 time)
{
    return "{\"defaultData\":{\"cpu\":\"c & é 中\",\"ram\":\" 16 GB RAM\"},\"eventId\":\"" + id +
           "\",\"extraData\":" + extra + ",\"timestamp\":" + QByteArray::number(time) + "}";
}

class EventsFixture : public CloudTest
{
    Q_OBJECT

protected:
    void use(const QString &baseAddress, cloud::PeerCheck check = cloud::PeerCheck::Off)
    {
        manager_ = std::make_unique<HttpManager>(HttpManager::Dependencies{
            *clock_,
            [] {
                return QJsonObject{{"cpu", "c & é 中"}, {"ram", " 16 GB RAM"}};
            },
            baseAddress, check});
    }
    void use(const QJsonObject &answers)
    {
        cloud_->begin(answers);
        use(cloud_->base());
    }
    void useNamed(const QString &answers)
    {
        cloud_->begin(answers);
        use(cloud_->base());
    }
    // An event of this moment with the identifier "id", as it is sent.
    QString eventNow() const
    {
        return QString::fromUtf8(recordText("id", "{}", clock_->now().toMSecsSinceEpoch()));
    }
    bool isBusy() const { return !manager_->findChildren<QNetworkReply *>().isEmpty(); }

    // Whether an answer is still waited for.
    bool isWaiting() const
    {
        const auto replies = manager_->findChildren<QNetworkReply *>();
        return std::any_of(replies.begin(), replies.end(),
                           [](const QNetworkReply *reply) { return reply->isRunning(); });
    }

    std::unique_ptr<ManualClock> clock_;
    std::unique_ptr<HttpManager> manager_;

protected slots:
    void init()
    {
        TestCase::init();
        clock_ = std::make_unique<ManualClock>();
    }
    void cleanup()
    {
        manager_.reset();
        clock_.reset();
        TestCase::cleanup();
    }
};
