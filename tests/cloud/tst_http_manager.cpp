#include "tests/cloud/events_fixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSet>

#include <atomic>
#include <thread>
#include <vector>

namespace {

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

} // namespace

// The batches of usage events.
class TestHttpManager : public EventsFixture
{
    Q_OBJECT

private slots:
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

    void whatIsForgottenIsNotSent()
    {
        useNamed("normal");
        manager_->addEvent("id", {});
        manager_->forgetEvents();
        manager_->sendEvents(false);
        QCOMPARE(cloud_->receivedCount(), 0);
        manager_->addEvent("id2", {});
        manager_->sendEvents(false);
        QCOMPARE(cloud_->receivedCount(), 1);
        QVERIFY(!cloud_->received().first().body.contains("\"id\""));
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
