// One run's check for requirements and updates at the stand-in cloud.
#pragma once

#include "cloud/orb_update.h"
#include "tests/cloud/cloud_test.h"

#include <QNetworkReply>

#include <algorithm>

// Answers to the version query with a newer version and these members beside.
inline QJsonObject newer(const QJsonObject &members = {})
{
    QJsonObject data{{"version", "9.1.17.500"},
                     {"forced", 0},
                     {"note", "New"},
                     {"url", "{base}/download/Setup.exe"}};
    for (auto it = members.begin(); it != members.end(); ++it)
        data[it.key()] = it.value();
    return {{"version", QJsonObject{{"json", QJsonObject{{"errCode", 0}, {"data", data}}}}}};
}

inline QJsonObject with(QJsonObject answers, const QString &service, const QJsonObject &answer)
{
    answers[service] = answer;
    return answers;
}

inline const QJsonObject shortTable{{"body", "{\"cpu\":{}}"}};

class UpdateFixture : public CloudTest
{
    Q_OBJECT

protected:
    QString download() const { return path("data/download"); }
    QString installer() const { return download() + "/Setup.exe"; }

    void make(const QString &host, cloud::PeerCheck check = cloud::PeerCheck::Off,
              qint64 longest = 512 << 20)
    {
        update_ = std::make_unique<ORBUpdate>(ORBUpdate::Dependencies{
            host, path("data"), [this](const QString &program) { started_ << program; }, check,
            longest});
        connect(update_.get(), &ORBUpdate::updateSignal, this,
                [this](const QString &note, bool isForce) {
                    offers_ << note + (isForce ? "|true" : "|false");
                });
        connect(update_.get(), &ORBUpdate::processStatus, this,
                [this](float value) { progress_ << value; });
        connect(update_.get(), &ORBUpdate::downExeFinish, this, [this] { ++finished_; });
    }
    // Lets one run's check happen, to its end.
    void check(const QJsonObject &answers)
    {
        cloud_->begin(answers);
        make(cloud_->host());
        settle();
    }
    void settle()
    {
        QTRY_VERIFY_WITH_TIMEOUT(update_->findChildren<QNetworkReply *>().isEmpty(), 60000);
    }
    QList<Received> requestsTo(const QByteArray &target) const
    {
        QList<Received> list = cloud_->received();
        list.erase(std::remove_if(list.begin(), list.end(),
                                  [&](const Received &r) { return r.target != target; }),
                   list.end());
        return list;
    }
    int loggedWith(const QString &text) const { return logged().filter(text).size(); }

    std::unique_ptr<ORBUpdate> update_;
    QStringList started_;
    QStringList offers_; // "note|true"
    QList<float> progress_;
    int finished_ = 0;

protected slots:
    void init()
    {
        TestCase::init();
        started_.clear();
        offers_.clear();
        progress_.clear();
        finished_ = 0;
    }
    void cleanup()
    {
        update_.reset();
        TestCase::cleanup();
    }
};
