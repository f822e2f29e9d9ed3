#include "cloud/http_manager.h"

#include "base/manual_clock.h"
#include "tests/cloud/cloud_peer.h"
#include "tests/support/test_case.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QTcpServer>
#include <QTimer>

namespace {

constexpr int tick = 600000; // ms

QJsonArray batchOf(const Received &request)
{
    return QJsonDocument::fromJson(request.body).array();
}

QStringList idsOf(const Received &request)
{
    QStringList ids;
    const QJsonArray batch = batchOf(request);
    for (const QJsonValue &event : batch)
        ids.append(event.toObject().value("eventId").toString());
    return ids;
}

// A record as it stands in a batch.
QByteArray recordText(const QByteArray &id, const QByteArray &extra, qint64 time)
{
    return "{\"defaultData\":{\"cpu\":\"c & é 中\",\"ram\":\" 16 GB RAM\"},\"eventId\":\"" + id +
           "\",\"extraData\":" + extra + ",\"timestamp\":" + QByteArray::number(time) + "}";
}

} // namespace

class TestHttpManager : public TestCase
{
    Q_OBJECT

    std::unique_ptr<CloudPeer> cloud_;
    std::unique_ptr<ManualClock> clock_;
    std::unique_ptr<HttpManager> manager_;

    void use(const QString &baseAddress, cloud::PeerCheck check = cloud::PeerCheck::Off)
    {
        manager_ = std::make_unique<HttpManager>(HttpManager::Environment{
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

    // Runs `action` in the event loop as soon as `condition` holds.
    void when(std::function<bool()> condition, std::function<void()> action)
    {
        auto *const timer = new QTimer(manager_.get());
        connect(timer, &QTimer::timeout, timer, [timer, condition, action] {
            if (!condition())
                return;
            timer->deleteLater();
            timer->stop();
            action();
        });
        timer->start(1);
    }

private slots:
    void initTestCase()
    {
        cloud_ = std::make_unique<CloudPeer>();
        QVERIFY(cloud_->isUp());
    }
    void cleanupTestCase() { cloud_.reset(); }

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

    void twoEventsBeforeATickArriveTogetherOldestFirst()
    {
        useNamed("normal");
        manager_->addEvent("first", {});
        manager_->addEvent("second", {{"a", 1}});
        clock_->advance(tick - 1);
        QVERIFY(!isBusy());
        clock_->advance(1);
        QVERIFY(isBusy());
        QTRY_VERIFY(!isBusy());
        QCOMPARE(cloud_->receivedCount(), 1);
        QCOMPARE(idsOf(cloud_->received().first()), QStringList({"first", "second"}));

        clock_->advance(tick);
        QVERIFY(!isBusy()); // nothing new: no request
        manager_->addEvent("third", {});
        clock_->advance(tick);
        QTRY_VERIFY(!isBusy());
        QCOMPARE(cloud_->receivedCount(), 2);
        QCOMPARE(idsOf(cloud_->received().last()), QStringList("third"));
    }

    void aBatchLooksLikeThisOnTheWire()
    {
        useNamed("normal");
        manager_->addEvent("id", {{"text", "a\"b\n"}, {"whole", 3}, {"flag", true}});
        clock_->advance(1500);
        manager_->addEvent("id2", {});
        manager_->sendEvents(true);
        QTRY_VERIFY(!isBusy());
        const Received request = cloud_->received().first();
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.target, QByteArray("/vrmcsys/datacenter/streaming_data_upload"));
        QCOMPARE(request.headers.value("Content-Type"),
                 QByteArray("application/json;charset=UTF-8"));
        QCOMPARE(request.headers.value("Content-Length"), QByteArray::number(request.body.size()));
        const qint64 start = ManualClock().now().toMSecsSinceEpoch();
        QCOMPARE(QByteArray::number(start).size(), 13);
        QCOMPARE(request.body,
                 '[' +
                     recordText("id", "{\"flag\":true,\"text\":\"a\\\"b\\n\",\"whole\":3}", start) +
                     ',' + recordText("id2", "{}", start + 1500) + ']');
    }

    void anErrorCodeIsLoggedAndTheBatchIsGone()
    {
        useNamed("error-code");
        manager_->addEvent("id", {});
        manager_->sendEvents(true);
        announce("report error: {\"errCode\":1,\"errMsg\":\"no\"}:[" + eventNow() + "]");
        QTRY_VERIFY(!isBusy());
        clock_->advance(tick);
        QVERIFY(!isBusy());
        QCOMPARE(cloud_->receivedCount(), 1);
    }

    void whatIsNotJsonIsLoggedAndTheBatchIsGone_data()
    {
        QTest::addColumn<QString>("answers");
        QTest::newRow("HTML") << "html";
        QTest::newRow("status 500") << "error-500";
        QTest::newRow("broken off") << "cut";
    }
    void whatIsNotJsonIsLoggedAndTheBatchIsGone()
    {
        QFETCH(QString, answers);
        useNamed(answers);
        manager_->addEvent("id", {});
        manager_->sendEvents(true);
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        QTRY_VERIFY(!isBusy());
        clock_->advance(tick);
        QVERIFY(!isBusy());
        QCOMPARE(cloud_->receivedCount(), 1);
    }

    void anAnswerMayComeInPieces_data()
    {
        QTest::addColumn<QString>("answers");
        QTest::newRow("pieces") << "pieces";
        QTest::newRow("no length") << "no-length";
    }
    void anAnswerMayComeInPieces()
    {
        QFETCH(QString, answers);
        useNamed(answers);
        manager_->addEvent("id", {});
        manager_->sendEvents(true);
        QTRY_VERIFY(!isBusy());
        QVERIFY(logged().isEmpty());
    }

    void anEventAddedWhileABatchIsUnderWayGoesIntoTheNext()
    {
        useNamed("normal");
        manager_->addEvent("first", {});
        manager_->sendEvents(true);
        QVERIFY(isBusy());
        manager_->addEvent("second", {});
        QTRY_VERIFY(!isBusy());
        QCOMPARE(cloud_->receivedCount(), 1);
        manager_->sendEvents(true);
        QTRY_VERIFY(!isBusy());
        const QList<Received> requests = cloud_->received();
        QCOMPARE(requests.size(), 2);
        QCOMPARE(idsOf(requests[0]), QStringList("first"));
        QCOMPARE(idsOf(requests[1]), QStringList("second"));
    }

    void aFlushOfNothingReturnsAtOnce()
    {
        useNamed("normal");
        bool looped = false;
        QMetaObject::invokeMethod(
            this, [&] { looped = true; }, Qt::QueuedConnection);
        manager_->sendEvents(false);
        QVERIFY(!looped);
        QVERIFY(!isBusy());
        QCoreApplication::processEvents();
        QVERIFY(looped);
        QCOMPARE(cloud_->receivedCount(), 0);
    }

    void aFlushReturnsWhenTheAnswerHasBeenHandled()
    {
        useNamed("error-code");
        manager_->addEvent("id", {});
        announce("report error: {\"errCode\":1,\"errMsg\":\"no\"}:[" + eventNow() + "]");
        manager_->sendEvents(false);
        QCOMPARE(cloud_->receivedCount(), 1);
        QCOMPARE(logged().size(), 1);
    }
};

KOLM_TEST_MAIN(TestHttpManager)
#include "tst_http_manager.moc"
