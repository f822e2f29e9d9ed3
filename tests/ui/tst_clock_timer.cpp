#include "base/manual_clock.h"
#include "tests/support/test_case.h"
#include "ui/clock_timer.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>

#include <memory>

namespace {

ManualClock *pageClock = nullptr;

// As a page makes it, by a clock that the test moves.
class PageTimer : public ClockTimer
{
public:
    PageTimer() : ClockTimer(*pageClock) {}
};

} // namespace

class TestClockTimer : public TestCase
{
    Q_OBJECT

    static std::unique_ptr<QObject> page(QQmlEngine &engine, const QByteArray &properties)
    {
        QQmlComponent component(&engine);
        component.setData(
            "import QtQml 2.15\nimport Test.Time 1.0\nPageTimer { " + properties + " }", QUrl());
        return std::unique_ptr<QObject>(component.create());
    }

private slots:
    void initTestCase() { qmlRegisterType<PageTimer>("Test.Time", 1, 0, "PageTimer"); }

    void doesNothingUntilItIsStarted()
    {
        ManualClock clock;
        ClockTimer timer(clock);
        const QSignalSpy triggered(&timer, &ClockTimer::triggered);
        QVERIFY(!timer.isRunning());
        QVERIFY(!timer.repeats());
        clock.advance(60000);
        QCOMPARE(triggered.count(), 0);
        QVERIFY(clock.idle());
    }

    void fallsDueOnceAndToTheMillisecond()
    {
        ManualClock clock;
        ClockTimer timer(clock);
        const QSignalSpy triggered(&timer, &ClockTimer::triggered);
        timer.setInterval(2500);
        timer.start();
        QVERIFY(timer.isRunning());
        clock.advance(2499);
        QCOMPARE(triggered.count(), 0);
        clock.advance(1);
        QCOMPARE(triggered.count(), 1);
        QVERIFY(!timer.isRunning());
        QVERIFY(clock.idle());
        clock.advance(60000);
        QCOMPARE(triggered.count(), 1);
    }

    void repeatsWhenToldTo()
    {
        ManualClock clock;
        ClockTimer timer(clock);
        const QSignalSpy triggered(&timer, &ClockTimer::triggered);
        timer.setInterval(100);
        timer.setRepeat(true);
        timer.start();
        clock.advance(350);
        QCOMPARE(triggered.count(), 3);
        QVERIFY(timer.isRunning());
        timer.stop();
        clock.advance(1000);
        QCOMPARE(triggered.count(), 3);
        QVERIFY(clock.idle());
    }

    void restartCountsFromTheBeginning()
    {
        ManualClock clock;
        ClockTimer timer(clock);
        const QSignalSpy triggered(&timer, &ClockTimer::triggered);
        timer.setInterval(100);
        timer.restart();
        QVERIFY(timer.isRunning());
        clock.advance(60);
        timer.restart();
        clock.advance(60);
        QCOMPARE(triggered.count(), 0);
        clock.advance(40);
        QCOMPARE(triggered.count(), 1);
    }

    void startLeavesARunningTimerAlone()
    {
        ManualClock clock;
        ClockTimer timer(clock);
        const QSignalSpy triggered(&timer, &ClockTimer::triggered);
        timer.setInterval(100);
        timer.start();
        clock.advance(60);
        timer.start();
        clock.advance(40);
        QCOMPARE(triggered.count(), 1);
    }

    void newIntervalCountsFromTheBeginning()
    {
        ManualClock clock;
        ClockTimer timer(clock);
        const QSignalSpy triggered(&timer, &ClockTimer::triggered);
        timer.setInterval(100);
        timer.start();
        clock.advance(60);
        timer.setInterval(50);
        clock.advance(49);
        QCOMPARE(triggered.count(), 0);
        clock.advance(1);
        QCOMPARE(triggered.count(), 1);
    }

    void mayBeStartedAnewByWhatItTriggers()
    {
        ManualClock clock;
        ClockTimer timer(clock);
        int count = 0;
        timer.setInterval(100);
        connect(&timer, &ClockTimer::triggered, &timer, [&] {
            QVERIFY(!timer.isRunning());
            if (++count < 3)
                timer.start();
        });
        timer.start();
        clock.advance(1000);
        QCOMPARE(count, 3);
        QVERIFY(!timer.isRunning());
    }

    void tellsWhatChanges()
    {
        ManualClock clock;
        ClockTimer timer(clock);
        const QSignalSpy running(&timer, &ClockTimer::runningChanged);
        const QSignalSpy interval(&timer, &ClockTimer::intervalChanged);
        const QSignalSpy repeat(&timer, &ClockTimer::repeatChanged);
        timer.setInterval(10);
        timer.setInterval(10);
        timer.setRepeat(true);
        timer.setRepeat(false);
        timer.start();
        timer.start();
        clock.advance(10);
        QCOMPARE(interval.count(), 1);
        QCOMPARE(repeat.count(), 2);
        QCOMPARE(running.count(), 2);
    }

    void leavesNothingBehind()
    {
        ManualClock clock;
        {
            ClockTimer timer(clock);
            timer.start();
            QVERIFY(!clock.idle());
        }
        QVERIFY(clock.idle());
    }

    void pageStartsItWithAllThatItSays()
    {
        ManualClock clock;
        pageClock = &clock;
        QQmlEngine engine;
        const auto timer = page(engine, "running: true; interval: 300");
        QVERIFY(timer);
        const QSignalSpy triggered(timer.get(), SIGNAL(triggered()));
        clock.advance(299);
        QCOMPARE(triggered.count(), 0);
        clock.advance(1);
        QCOMPARE(triggered.count(), 1);
    }

    void pageMayBindWhetherItRuns()
    {
        ManualClock clock;
        pageClock = &clock;
        QQmlEngine engine;
        const auto timer =
            page(engine, "property bool wanted: false; running: wanted; interval: 10");
        QVERIFY(timer);
        const QSignalSpy triggered(timer.get(), SIGNAL(triggered()));
        for (int round = 1; round <= 3; ++round) {
            timer->setProperty("wanted", true);
            clock.advance(10);
            QCOMPARE(triggered.count(), round);
            timer->setProperty("wanted", false);
        }
    }
};

KOLM_TEST_MAIN(TestClockTimer)
#include "tst_clock_timer.moc"
