#include "tests/cloud/events_fixture.h"

#include <QTcpServer>
#include <QTimer>

// The end of the program waits for the last batch, within limits.
class TestHttpFlush : public EventsFixture
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        // No event loop runs after a quit() until one of the application's has ended.
        QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
        QCoreApplication::exec();
        EventsFixture::cleanup();
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

    // The order of things at a log-off just after the window was closed.
    void aFlushEndsWhenItsRequestIsGivenUp()
    {
        useNamed("silent");
        manager_->addEvent("id", {});
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        when([this] { return cloud_->receivedCount() == 1; },
             [this] {
                 manager_->abortRequests();
                 QCoreApplication::quit();
             });
        manager_->sendEvents(false);
        QVERIFY(!isBusy());
    }

    void aFlushThatIsGivenUpWaitsForNothingMore()
    {
        useNamed("silent");
        manager_->addEvent("id", {});
        announce("error evnetid: [" + eventNow() + "] json parse fail");
        when([this] { return cloud_->receivedCount() == 1; },
             [this] { manager_->abortRequests(); });
        manager_->sendEvents(false);
        QVERIFY(!isBusy());
    }

    void aFlushEndsWithTheOneWhoAskedForIt()
    {
        useNamed("silent");
        manager_->addEvent("id", {});
        when([this] { return cloud_->receivedCount() == 1; }, [this] { manager_.reset(); });
        manager_->sendEvents(false);
        QVERIFY(!manager_);
        QVERIFY(logged().isEmpty());
    }

private:
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
};

KOLM_TEST_MAIN(TestHttpFlush)
#include "tst_http_flush.moc"
