#include "tests/cloud/events_fixture.h"
#include "tests/cloud/silent_peer.h"

// Whatever becomes of the connection, nothing is sent a second time.
class TestSentOnce : public EventsFixture
{
    Q_OBJECT

    static void addEnds()
    {
        QTest::addColumn<QByteArray>("said");
        QTest::newRow("without a word") << QByteArray();
        QTest::newRow("half a status line") << QByteArray("HTTP/1.1 20");
        QTest::newRow("half a head") << QByteArray("HTTP/1.1 200 OK\r\nContent-Le");
        QTest::newRow("half a body") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{");
    }

private slots:
    void aBatchIsSentOnce_data() { addEnds(); }

    void aBatchIsSentOnce()
    {
        QFETCH(QByteArray, said);
        SilentPeer peer(said);
        use(peer.base());
        manager_->addEvent("id", {});
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        manager_->sendEvents(true);
        QTRY_VERIFY(!isBusy());
        QCOMPARE(peer.requests, 1);
    }

    void theLastBatchIsSentOnce_data() { addEnds(); }

    void theLastBatchIsSentOnce()
    {
        QFETCH(QByteArray, said);
        SilentPeer peer(said);
        use(peer.base());
        manager_->addEvent("id", {});
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        manager_->sendEvents(false);
        QCOMPARE(peer.requests, 1);
    }

    void anUploadIsSentOnce_data() { addEnds(); }

    void anUploadIsSentOnce()
    {
        QFETCH(QByteArray, said);
        SilentPeer peer(said);
        use(peer.base());
        writeFile("feedback.json", "{}");
        manager_->uploadFile("feedback.json", "name");
        QTRY_VERIFY(!isBusy());
        QCOMPARE(peer.requests, 1);
    }
};

KOLM_TEST_MAIN(TestSentOnce)
#include "tst_sent_once.moc"
