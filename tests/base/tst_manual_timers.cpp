#include "base/manual_clock.h"
#include "tests/base/clock_users.h"
#include "tests/support/test_case.h"

#include <QThread>

#include <atomic>
#include <chrono>
#include <memory>
#include <vector>

using namespace std::chrono_literals;

// What ticks by a clock that is moved by hand, and the threads that ask it.
class TestManualTimers : public TestCase
{
    Q_OBJECT

private slots:
    void aTimerTicksAtEachPeriod()
    {
        ManualClock clock;
        QList<qint64> ticks;
        Ticker ticker([&](int) { ticks << clock.elapsed(); });
        const int id = clock.startTimer(1000ms, &ticker);

        clock.advance(3999);
        QCOMPARE(ticks, QList<qint64>({1000, 2000, 3000}));
        clock.advance(1);
        QCOMPARE(ticks, QList<qint64>({1000, 2000, 3000, 4000}));

        clock.killTimer(id, &ticker);
        clock.advance(5000);
        QCOMPARE(ticks.size(), 4);
    }

    void aTimerCanBeKilledFromItsOwnTick()
    {
        ManualClock clock;
        int ticks = 0;
        Ticker *self = nullptr;
        Ticker ticker([&](int id) {
            if (++ticks == 2)
                clock.killTimer(id, self);
        });
        self = &ticker;
        clock.startTimer(100ms, &ticker);

        clock.advance(1000);

        QCOMPARE(ticks, 2);
        QVERIFY(clock.idle());
    }

    void aKilledTimerTakesNoOtherWithIt()
    {
        ManualClock clock;
        QList<int> ticks;
        int shots = 0;
        Ticker ticker([&](int id) { ticks << id; });
        const int first = clock.startTimer(100ms, &ticker);
        const int second = clock.startTimer(100ms, &ticker);
        clock.singleShot(100ms, &ticker, [&] { ++shots; });

        clock.killTimer(first, &ticker);
        clock.killTimer(first, &ticker);
        clock.advance(100);

        QCOMPARE(ticks, QList<int>({second}));
        QCOMPARE(shots, 1);
    }

    void timerIdsAreDistinctAndNotZero()
    {
        ManualClock clock;
        QList<int> ticks;
        Ticker ticker([&](int id) { ticks << id; });

        const int first = clock.startTimer(200ms, &ticker);
        const int second = clock.startTimer(100ms, &ticker);

        QVERIFY(first != 0);
        QVERIFY(second != 0);
        QVERIFY(first != second);
        clock.advance(200);
        QCOMPARE(ticks, QList<int>({second, first, second}));
    }

    void aTimerOfADestroyedReceiverIsGone()
    {
        ManualClock clock;
        int ticks = 0;
        auto ticker = std::make_unique<Ticker>([&](int) { ++ticks; });
        clock.startTimer(100ms, ticker.get());
        clock.advance(150);

        ticker.reset();
        clock.advance(1000);

        QCOMPARE(ticks, 1);
        QVERIFY(clock.idle());
    }

    void aTimerOfNoPeriodTicksEachMillisecond()
    {
        ManualClock clock;
        QList<qint64> ticks;
        Ticker ticker([&](int) { ticks << clock.elapsed(); });
        clock.startTimer(0ms, &ticker);

        clock.advance(3);

        QCOMPARE(ticks, QList<qint64>({0, 1, 2, 3}));
    }

    void sleptOverTicksAreMadeUpForOnce()
    {
        ManualClock clock;
        QList<qint64> ticks;
        Ticker ticker([&](int) { ticks << clock.elapsed(); });
        clock.startTimer(100ms, &ticker);
        clock.singleShot(150ms, this, [&] { clock.sleep(500ms); });

        clock.advance(1000);

        QCOMPARE(ticks, QList<qint64>({100, 650, 750, 850, 950}));
    }

    void actionsRunOnTheThreadOfTheirContext()
    {
        ManualClock clock;
        Worker worker;
        QThread *ranOn = nullptr;
        QStringList ran;
        clock.singleShot(100ms, this, [&] { ran << "here"; });
        clock.singleShot(100ms, worker.object(), [&] {
            ranOn = QThread::currentThread();
            ran << "there";
        });
        clock.singleShot(100ms, this, [&] { ran << "here again"; });

        clock.advance(100);

        QCOMPARE(ranOn, worker.thread());
        QCOMPARE(ran, QStringList({"here", "there", "here again"}));
    }

    void ticksReachTheThreadOfTheirReceiver()
    {
        ManualClock clock;
        Worker worker;
        QList<QThread *> ranOn;
        Ticker *ticker = nullptr;
        int id = 0;
        worker.run([&] {
            ticker = new Ticker([&](int) { ranOn << QThread::currentThread(); });
            id = clock.startTimer(100ms, ticker);
        });

        clock.advance(200);
        QCOMPARE(ranOn, QList<QThread *>({worker.thread(), worker.thread()}));

        worker.run([&] {
            clock.killTimer(id, ticker);
            delete ticker;
        });
        clock.advance(200);
        QCOMPARE(ranOn.size(), 2);
    }

    void anotherThreadsSleepMovesTheClock()
    {
        ManualClock clock;
        Worker worker;
        int runs = 0;
        clock.singleShot(100ms, this, [&] { ++runs; });

        worker.run([&] { clock.sleep(100ms); });

        QCOMPARE(clock.elapsed(), 100);
        QCOMPARE(runs, 0);
        clock.advance(0);
        QCOMPARE(runs, 1);
    }

    void manyThreadsMayAskAtOnce()
    {
        ManualClock clock;
        std::atomic<int> runs{0};
        const auto ask = [&] {
            for (int i = 0; i < 500; ++i) {
                clock.singleShot(std::chrono::milliseconds(i), this, [&] { ++runs; });
                clock.sleep(1ms);
                clock.now();
            }
        };
        std::vector<std::unique_ptr<QThread>> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back(QThread::create(ask));
            threads.back()->start();
        }
        while (runs < 1000 && clock.elapsed() < 1000000)
            clock.advance(1);
        for (const auto &thread : threads)
            thread->wait();
        clock.advance(3000);

        QCOMPARE(runs.load(), 4 * 500);
        QCOMPARE(clock.slept(), 4 * 500);
    }
};

KOLM_TEST_MAIN(TestManualTimers)
#include "tst_manual_timers.moc"
