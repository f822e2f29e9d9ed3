#include "base/manual_clock.h"
#include "tests/base/clock_users.h"
#include "tests/support/test_case.h"

#include <chrono>
#include <memory>

using namespace std::chrono_literals;

// Time that is moved by hand, and what is to be done at some time.
class TestManualClock : public TestCase
{
    Q_OBJECT

private slots:
    void timeStandsStillUntilItIsMoved()
    {
        ManualClock clock;

        QCOMPARE(clock.elapsed(), 0);
        QCOMPARE(clock.now(), clock.now());
        clock.advance(0);
        QCOMPARE(clock.elapsed(), 0);
        clock.advance(1500);
        QCOMPARE(clock.elapsed(), 1500);
    }

    void theWallClockMovesWithTheElapsedTime()
    {
        ManualClock clock(QDateTime({2024, 2, 28}, {23, 59, 59, 999}));

        clock.advance(1);
        QCOMPARE(clock.now(), QDateTime({2024, 2, 29}, {0, 0}));
        clock.sleep(24h);
        QCOMPARE(clock.now(), QDateTime({2024, 3, 1}, {0, 0}));
    }

    void actionsRunInTheOrderOfTheirDeadlines()
    {
        ManualClock clock;
        QStringList ran;
        clock.singleShot(300ms, this, [&] { ran << "300"; });
        clock.singleShot(100ms, this, [&] { ran << "100"; });
        clock.advance(50);
        clock.singleShot(100ms, this, [&] { ran << "150"; });
        clock.singleShot(10ms, this, [&] { ran << "60"; });

        clock.advance(1000);

        QCOMPARE(ran, QStringList({"60", "100", "150", "300"}));
    }

    void equalDeadlinesRunInTheOrderOfTheCalls()
    {
        ManualClock clock;
        QStringList ran;
        clock.singleShot(100ms, this, [&] { ran << "first"; });
        clock.singleShot(100ms, this, [&] { ran << "second"; });
        clock.advance(50);
        clock.singleShot(50ms, this, [&] { ran << "third"; });
        Ticker ticker([&](int) { ran << "tick"; });
        clock.startTimer(50ms, &ticker);
        clock.singleShot(50ms, this, [&] { ran << "fourth"; });

        clock.advance(50);

        QCOMPARE(ran, QStringList({"first", "second", "third", "tick", "fourth"}));
    }

    void anActionRunsAtItsDeadlineAndNotBefore_data()
    {
        QTest::addColumn<int>("delay");
        QTest::newRow("1 ms") << 1;
        QTest::newRow("1 s") << 1000;
        QTest::newRow("27 s") << 27000;
        QTest::newRow("a day") << 24 * 3600 * 1000;
    }

    void anActionRunsAtItsDeadlineAndNotBefore()
    {
        QFETCH(int, delay);
        ManualClock clock;
        int runs = 0;
        clock.singleShot(std::chrono::milliseconds(delay), this, [&] { ++runs; });

        clock.advance(delay - 1);
        QCOMPARE(runs, 0);
        clock.advance(1);
        QCOMPARE(runs, 1);
        clock.advance(delay);
        QCOMPARE(runs, 1);
    }

    void anActionSeesItsDeadlineAsTheTime()
    {
        ManualClock clock;
        qint64 seen = 0;
        clock.singleShot(400ms, this, [&] { seen = clock.elapsed(); });

        clock.advance(1000);

        QCOMPARE(seen, 400);
        QCOMPARE(clock.elapsed(), 1000);
    }

    void anActionDueAtOnceDoesNotRunInsideTheCall()
    {
        ManualClock clock;
        QStringList ran;
        clock.singleShot(0ms, this, [&] { ran << "0"; });
        clock.singleShot(-50ms, this, [&] { ran << "-50"; });
        QCOMPARE(ran, QStringList());

        clock.advance(0);

        QCOMPARE(ran, QStringList({"0", "-50"}));
    }

    void whatAnActionAsksForRunsInTheSameAdvanceWhenItIsDue()
    {
        ManualClock clock;
        QList<qint64> ran;
        clock.singleShot(100ms, this, [&] {
            clock.singleShot(0ms, this, [&] { ran << clock.elapsed(); });
            clock.singleShot(200ms, this, [&] { ran << clock.elapsed(); });
            clock.singleShot(201ms, this, [&] { ran << clock.elapsed(); });
        });

        clock.advance(300);
        QCOMPARE(ran, QList<qint64>({100, 300}));
        clock.advance(1);
        QCOMPARE(ran, QList<qint64>({100, 300, 301}));
    }

    void sleepingMovesTheClockButRunsNothing()
    {
        ManualClock clock;
        qint64 ranAt = -1;
        clock.singleShot(100ms, this, [&] { ranAt = clock.elapsed(); });

        clock.sleep(150ms);
        QCOMPARE(clock.elapsed(), 150);
        QCOMPARE(clock.slept(), 150);
        QCOMPARE(ranAt, -1);

        clock.advance(0);
        QCOMPARE(ranAt, 150);
    }

    void sleepingForNothingIsNothing()
    {
        ManualClock clock;

        clock.sleep(0ms);
        clock.sleep(-1000ms);

        QCOMPARE(clock.elapsed(), 0);
        QCOMPARE(clock.slept(), 0);
    }

    void anActionThatSleepsDelaysTheOthers()
    {
        ManualClock clock;
        QList<qint64> ran;
        clock.singleShot(100ms, this, [&] { clock.sleep(500ms); });
        clock.singleShot(200ms, this, [&] { ran << clock.elapsed(); });
        clock.singleShot(700ms, this, [&] { ran << clock.elapsed(); });

        clock.advance(1000);

        QCOMPARE(ran, QList<qint64>({600, 700}));
        QCOMPARE(clock.elapsed(), 1000);
    }

    void whatFallsDueBehindTheEndWhileAnActionSleepsWaits()
    {
        ManualClock clock;
        QList<qint64> ran;
        clock.singleShot(100ms, this, [&] { clock.sleep(500ms); });
        clock.singleShot(150ms, this, [&] { ran << clock.elapsed(); });

        clock.advance(100);
        QCOMPARE(clock.elapsed(), 600);
        QCOMPARE(ran, QList<qint64>());

        clock.advance(0);
        QCOMPARE(ran, QList<qint64>({600}));
        QCOMPARE(clock.elapsed(), 600);
    }

    void nothingRunsForADestroyedContext()
    {
        ManualClock clock;
        int runs = 0;
        auto context = std::make_unique<QObject>();
        clock.singleShot(100ms, context.get(), [&] { ++runs; });
        clock.singleShot(100ms, this, [&] { ++runs; });

        context.reset();
        clock.advance(1000);

        QCOMPARE(runs, 1);
    }

    void aContextMayDieInAnActionOfTheSameMoment()
    {
        ManualClock clock;
        int runs = 0;
        auto context = std::make_unique<Ticker>([&](int) { ++runs; });
        clock.singleShot(100ms, this, [&] { context.reset(); });
        clock.singleShot(100ms, context.get(), [&] { ++runs; });
        clock.startTimer(100ms, context.get());

        clock.advance(1000);

        QCOMPARE(runs, 0);
    }

    void anActionMayOwnWhatUsesTheClockWhenItGoes()
    {
        ManualClock clock;
        int goneAt = 0;
        const auto owned = [&] {
            return std::shared_ptr<void>(nullptr, [&](void *) {
                goneAt += static_cast<int>(clock.elapsed());
                clock.singleShot(0ms, this, [] {});
            });
        };
        auto context = std::make_unique<QObject>();
        clock.singleShot(10ms, this, [keep = owned()] {});
        clock.singleShot(20ms, this, [keep = owned()] {});
        clock.singleShot(30ms, context.get(), [keep = owned()] {});
        context.reset();

        clock.advance(100);

        QVERIFY(clock.idle());
        QCOMPARE(goneAt, 10 + 20);
    }

    void nothingWaitsWhenAllIsDone()
    {
        ManualClock clock;
        auto context = std::make_unique<QObject>();
        QVERIFY(clock.idle());

        clock.singleShot(10ms, this, [] {});
        QVERIFY(!clock.idle());
        clock.advance(10);
        QVERIFY(clock.idle());

        clock.singleShot(10ms, context.get(), [] {});
        QVERIFY(!clock.idle());
        context.reset();
        QVERIFY(clock.idle());
    }
};

KOLM_TEST_MAIN(TestManualClock)
#include "tst_manual_clock.moc"
