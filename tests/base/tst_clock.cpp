#include "base/clock.h"
#include "tests/base/clock_users.h"
#include "tests/support/test_case.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QSemaphore>
#include <QThread>

#include <chrono>
#include <future>
#include <memory>

using namespace std::chrono_literals;

namespace {

// Runs `loop` until somebody quits it; false when nobody does.
bool runLoop(QEventLoop &loop)
{
    Ticker giveUp([&](int) { loop.exit(1); });
    giveUp.startTimer(10000);
    return loop.exec() == 0;
}

} // namespace

// The real time.
class TestClock : public TestCase
{
    Q_OBJECT

private slots:
    void theSystemClockTellsTheTime()
    {
        Clock &clock = Clock::system();
        const QDateTime before = QDateTime::currentDateTime();
        const qint64 start = clock.elapsed();
        const QDateTime now = clock.now();

        QVERIFY(before <= now);
        QVERIFY(now <= QDateTime::currentDateTime());
        QCOMPARE(now.timeSpec(), Qt::LocalTime);
        QVERIFY(start >= 0);
        QVERIFY(clock.elapsed() >= start);
    }

    void theSystemClockSleeps()
    {
        QElapsedTimer timer;
        timer.start();
        const qint64 start = Clock::system().elapsed();

        Clock::system().sleep(20ms);

        QVERIFY(timer.elapsed() >= 19);
        QVERIFY(Clock::system().elapsed() - start >= 19);
        timer.restart();
        Clock::system().sleep(0ms);
        Clock::system().sleep(-100000ms);
        QVERIFY(timer.elapsed() < 10000);
    }

    void theSystemClockRunsActionsInOrder()
    {
        QElapsedTimer timer;
        timer.start();
        QEventLoop loop;
        QStringList ran;
        Clock::system().singleShot(60ms, &loop, [&] {
            ran << "60";
            loop.quit();
        });
        Clock::system().singleShot(20ms, &loop, [&] { ran << "20"; });
        Clock::system().singleShot(0ms, &loop, [&] { ran << "0"; });
        QCOMPARE(ran, QStringList());

        QVERIFY(runLoop(loop));

        QCOMPARE(ran, QStringList({"0", "20", "60"}));
        QVERIFY(timer.elapsed() >= 59);
    }

    void theSystemClockTakesLessThanNothingForNothing()
    {
        QEventLoop loop;
        Clock::system().singleShot(-1000ms, &loop, [&] { loop.quit(); });
        QVERIFY(runLoop(loop));

        Worker worker;
        QSemaphore done;
        Clock::system().singleShot(-1000ms, worker.object(), [&] { done.release(); });
        QVERIFY(done.tryAcquire(1, 10000));
    }

    void theSystemClockRunsNothingForADestroyedContext()
    {
        QEventLoop loop;
        bool ran = false;
        auto context = std::make_unique<QObject>();
        Clock::system().singleShot(10ms, context.get(), [&] { ran = true; });
        Clock::system().singleShot(30ms, &loop, [&] { loop.quit(); });
        context.reset();

        QVERIFY(runLoop(loop));

        QVERIFY(!ran);
    }

    void theSystemClockCountsFromTheCallOnAnotherThread()
    {
        // The other thread is held up for longer than the delay: then nothing is
        // left to wait for.
        constexpr int kDelay = 150;
        Worker worker;
        std::promise<void> held;
        std::promise<void> done;
        QThread *ranOn = nullptr;
        qint64 afterRelease = 0;
        QElapsedTimer released;
        worker.post([&] { held.get_future().wait(); });
        Clock::system().singleShot(std::chrono::milliseconds(kDelay), worker.object(), [&] {
            afterRelease = released.elapsed();
            ranOn = QThread::currentThread();
            done.set_value();
        });
        Clock::system().sleep(std::chrono::milliseconds(kDelay));
        released.start();
        held.set_value();

        QCOMPARE(done.get_future().wait_for(std::chrono::seconds(10)), std::future_status::ready);

        QCOMPARE(ranOn, worker.thread());
        QVERIFY2(afterRelease < kDelay, qPrintable(QString::number(afterRelease)));
    }

    void theSystemClockTicksUntilItIsKilled()
    {
        QEventLoop loop;
        QList<int> ticks;
        Ticker *self = nullptr;
        Ticker ticker([&](int id) {
            ticks << id;
            if (ticks.size() == 3) {
                Clock::system().killTimer(id, self);
                Clock::system().singleShot(30ms, &loop, [&] { loop.quit(); });
            }
        });
        self = &ticker;
        const int id = Clock::system().startTimer(10ms, &ticker, Qt::PreciseTimer);
        QVERIFY(id != 0);

        QVERIFY(runLoop(loop));

        QCOMPARE(ticks, QList<int>({id, id, id}));
    }

    void theSystemClockCanBeSpedUp()
    {
        QElapsedTimer timer;
        timer.start();
        Clock &clock = Clock::system();
        Clock::setSystemSpeed(1000);
        const qint64 start = clock.elapsed();
        const QDateTime now = clock.now();
        QEventLoop loop;
        clock.singleShot(20000ms, &loop, [&] { loop.quit(); });

        clock.sleep(20000ms);
        const qint64 slept = clock.elapsed() - start;
        const bool quit = runLoop(loop);
        const qint64 wall = now.msecsTo(clock.now());
        Clock::setSystemSpeed(1);

        QVERIFY(quit);
        QVERIFY(slept >= 19900);
        QVERIFY(wall >= slept);
        QVERIFY(timer.elapsed() < 10000);
    }
};

KOLM_TEST_MAIN(TestClock)
#include "tst_clock.moc"
