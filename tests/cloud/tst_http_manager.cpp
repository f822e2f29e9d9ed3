#include "cloud/http_manager.h"

#include "base/file_io.h"
#include "base/manual_clock.h"
#include "tests/cloud/cloud_peer.h"
#include "tests/support/test_case.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QSet>
#include <QTcpServer>
#include <QTimer>

#include <atomic>
#include <thread>
#include <vector>

namespace {

constexpr int tick = 600000;        // ms
constexpr int flushLimit = 5000;    // ms
constexpr int answerLimit = 300000; // ms

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
        QCOMPARE(cloud_->receivedCount(), 1);
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

    void aFlushGivesUpOnAServerThatDoesNotAnswer()
    {
        useNamed("silent");
        manager_->addEvent("id", {});
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        bool wasWaiting = false;
        when([this] { return cloud_->receivedCount() == 1; },
             [&] {
                 clock_->advance(flushLimit - 1);
                 wasWaiting = isWaiting();
                 clock_->advance(1);
             });
        manager_->sendEvents(false);
        QVERIFY(wasWaiting);
        QVERIFY(!isWaiting());
        QCOMPARE(logged().size(), 1);
        QCOMPARE(clock_->slept(), 0);
    }

    void aFlushGivesUpOnAServerThatOnlyAccepts()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        use(QStringLiteral("https://127.0.0.1:%1").arg(server.serverPort()));
        manager_->addEvent("id", {});
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        when([&] { return server.hasPendingConnections(); },
             [this] { clock_->advance(flushLimit); });
        manager_->sendEvents(false);
        QVERIFY(!isWaiting());
    }

    void aFlushToNobodyReturns()
    {
        quint16 port = 0;
        {
            QTcpServer server;
            QVERIFY(server.listen(QHostAddress::LocalHost));
            port = server.serverPort();
        }
        use(QStringLiteral("https://127.0.0.1:%1").arg(port));
        manager_->addEvent("id", {});
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        manager_->sendEvents(false);
        QVERIFY(!isWaiting());
    }

    void aFlushEndsWithTheProgram()
    {
        useNamed("silent");
        manager_->addEvent("id", {});
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        when([this] { return cloud_->receivedCount() == 1; }, [] { QCoreApplication::quit(); });
        manager_->sendEvents(false);
        QVERIFY(!isWaiting());
    }

    void aReplyThatNeverComesMakesRoomInTheEnd()
    {
        useNamed("silent");
        writeFile("feedback.json", "{}");
        manager_->addEvent("id", {});
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        manager_->sendEvents(true);
        manager_->uploadFile("feedback.json", "name");
        QTRY_COMPARE(cloud_->receivedCount(), 2);
        clock_->advance(answerLimit - 1);
        QVERIFY(isWaiting());
        clock_->advance(1);
        QTRY_VERIFY(!isBusy());
        QCOMPARE(logged().last(),
                 cloud_->base() + "/vrmcsys/fileserver/Stiosko/upload json parse fail");
    }

    void whoeverHasNoValidCertificateIsNotSpokenToIfThatIsWanted()
    {
        cloud_->begin("normal");
        use(cloud_->base(), cloud::PeerCheck::On);
        writeFile("feedback.json", "{}");
        manager_->addEvent("id", {});
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        manager_->sendEvents(true);
        manager_->uploadFile("feedback.json", "name");
        QTRY_VERIFY(!isBusy());
        QCOMPARE(cloud_->receivedCount(), 0);
    }

    void disconnectingDropsWhatIsUnderWay()
    {
        useNamed("silent");
        manager_->addEvent("id", {});
        manager_->sendEvents(true);
        QTRY_COMPARE(cloud_->receivedCount(), 1);
        manager_->abortRequests();
        QVERIFY(!isBusy());
        QVERIFY(logged().isEmpty());
    }

    void anUploadLooksLikeThisOnTheWire()
    {
        useNamed("normal");
        const QByteArray content =
            QByteArray("{\"content\":\"\xe5\xa5\xbd\"}\r\n--x") + QByteArray(2, '\0');
        writeFile("feedback.json", content);
        manager_->uploadFile(path("feedback.json"), "2024-05-17 14:03:07_D3_中 & é\"");
        QTRY_VERIFY(!isBusy());
        QCOMPARE(cloud_->receivedCount(), 1);
        const Received request = cloud_->received().first();
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.target, QByteArray("/vrmcsys/fileserver/Stiosko/upload"));
        const QByteArray type = request.headers.value("Content-Type");
        const QByteArray start = "multipart/form-data; boundary=\"";
        QVERIFY2(type.startsWith(start) && type.endsWith('"'), type);
        const QByteArray boundary = type.mid(start.size()).chopped(1);
        QVERIFY(!boundary.isEmpty());
        QCOMPARE(request.headers.value("Content-Length"), QByteArray::number(request.body.size()));
        QCOMPARE(request.body,
                 "--" + boundary +
                     "\r\nContent-Disposition: form-data;name=\"file\";filename=\".json\""
                     "\r\nContent-Type: multipart/form-data;\r\n\r\n" +
                     content + "\r\n--" + boundary +
                     "\r\nContent-Disposition: form-data;name=\"fileName\"\r\n\r\n"
                     "2024-05-17 14:03:07_D3_中 & é\"\r\n--" +
                     boundary + "--\r\n");
        QVERIFY(logged().isEmpty());
    }

    void theAnswerToAnUploadIsOnlyLogged_data()
    {
        QTest::addColumn<QString>("answers");
        QTest::addColumn<QString>("line");
        QTest::newRow("refused") << "error-code"
                                 << "no:{address}";
        QTest::newRow("HTML") << "html"
                              << "{address} json parse fail";
        QTest::newRow("cut") << "cut"
                             << "{address} json parse fail";
    }
    void theAnswerToAnUploadIsOnlyLogged()
    {
        QFETCH(QString, answers);
        QFETCH(QString, line);
        useNamed(answers);
        writeFile("feedback.json", "{}");
        manager_->uploadFile("feedback.json", "name");
        QTRY_VERIFY(!isBusy());
        const QString address = cloud_->base() + "/vrmcsys/fileserver/Stiosko/upload";
        QCOMPARE(logged(), QStringList(line.replace("{address}", address)));
    }

    void aFileThatCannotBeReadIsNotUploaded()
    {
        useNamed("normal");
        manager_->uploadFile("missing.json", "name");
        QVERIFY(!isBusy());
        QCOMPARE(logged().size(), 1);
        QVERIFY(logged().first().startsWith("missing.json cannot be uploaded: "));
    }

    void aFileIsSentAsItWasAndMayBeReplacedMeanwhile()
    {
        useNamed("silent");
        for (const char *content : {"first", "second"}) {
            QCOMPARE(replaceFile("feedback.json", content), WriteResult::Ok);
            manager_->uploadFile("feedback.json", "name");
        }
        writeFile("feedback.json", "overwritten");
        QTRY_COMPARE(cloud_->receivedCount(), 2);
        QVERIFY(isWaiting());
        // They have a connection each, and either may be the faster.
        const QList<Received> requests = cloud_->received();
        const bool inOrder = requests[0].body.contains("\r\n\r\nfirst\r\n");
        QVERIFY(requests[inOrder ? 0 : 1].body.contains("\r\n\r\nfirst\r\n"));
        QVERIFY(requests[inOrder ? 1 : 0].body.contains("\r\n\r\nsecond\r\n"));
    }

    void eventsMayComeFromEveryThread()
    {
        constexpr int threads = 8;
        constexpr int each = 500;
        useNamed("normal");
        std::vector<std::thread> adding;
        std::atomic<int> added{0};
        for (int t = 0; t < threads; ++t) {
            adding.emplace_back([this, t, &added] {
                for (int i = 0; i < each; ++i) {
                    manager_->addEvent(QString::number(t), {{"i", i}});
                    ++added;
                }
            });
        }
        // Batches leave while events are added.
        while (added < threads * each)
            manager_->sendEvents(true);
        for (std::thread &thread : adding)
            thread.join();
        manager_->sendEvents(true);
        QTRY_VERIFY_WITH_TIMEOUT(!isBusy(), 60000);

        // None is lost, none is doubled, and each thread's are in its order
        // within a batch.
        QMap<QString, QSet<int>> seen;
        int count = 0;
        for (const Received &request : cloud_->received()) {
            QMap<QString, int> last;
            for (const QJsonValue &value : batchOf(request)) {
                const QJsonObject event = value.toObject();
                const QString id = event["eventId"].toString();
                const int i = event["extraData"].toObject()["i"].toInt(-1);
                QVERIFY(i > last.value(id, -1));
                last[id] = i;
                seen[id].insert(i);
                ++count;
            }
        }
        QCOMPARE(count, threads * each);
        QCOMPARE(seen.size(), threads);
        for (const QSet<int> &numbers : qAsConst(seen))
            QCOMPARE(numbers.size(), each);
    }

    void aHundredThousandEventsGoInOneBatch()
    {
        constexpr int count = 100000;
        useNamed("normal");
        for (int i = 0; i < count; ++i)
            manager_->addEvent("id", {{"i", i}});
        clock_->advance(tick);
        QTRY_VERIFY_WITH_TIMEOUT(!isBusy(), 100000);
        QCOMPARE(cloud_->receivedCount(), 1);
        const QJsonArray batch = batchOf(cloud_->received().first());
        QCOMPARE(batch.size(), count);
        for (int i = 0; i < count; ++i)
            QCOMPARE(batch[i].toObject()["extraData"].toObject()["i"].toInt(), i);
        QVERIFY(logged().isEmpty());
    }
};

KOLM_TEST_MAIN(TestHttpManager)
#include "tst_http_manager.moc"
