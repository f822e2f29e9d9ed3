#include "tests/simpc/sim_host_fixture.h"

#include <atomic>

namespace {

// Counts what is waited for.
class CountingClock final : public Clock
{
public:
    ManualClock &manual() { return manual_; }
    int waits() const { return waits_; }

    QDateTime now() const override { return manual_.now(); }
    qint64 epochMilliseconds() const override { return manual_.epochMilliseconds(); }
    qint64 elapsed() const override { return manual_.elapsed(); }
    void sleep(std::chrono::milliseconds duration) override { manual_.sleep(duration); }
    void singleShot(std::chrono::milliseconds delay, QObject *context,
                    std::function<void()> action) override
    {
        ++waits_;
        manual_.singleShot(delay, context, std::move(action));
    }
    int startTimer(std::chrono::milliseconds interval, QObject *receiver,
                   Qt::TimerType type) override
    {
        return manual_.startTimer(interval, receiver, type);
    }
    void killTimer(int id, QObject *receiver) override { manual_.killTimer(id, receiver); }

private:
    ManualClock manual_;
    std::atomic<int> waits_{0};
};

} // namespace

class SimHostTest : public SimHostFixture
{
    Q_OBJECT

private slots:
    void thingsHappenWithoutAnybodyAsking()
    {
        ManualClock clock;
        SimHost host(from(R"({"title":"t","at":[{"seconds":20,"acLine":"offline"},
                                            {"seconds":30,"acLine":"online"}]})"),
                     options(clock));
        EventWatcher watcher(host.pc());
        host.start();
        clock.advance(19999);
        QCOMPARE(watcher.lines(), QStringList());
        clock.advance(1);
        QCOMPARE(watcher.lines(), QStringList("power line: offline"));
        clock.advance(10000);
        QCOMPARE(watcher.lines(), QStringList({"power line: offline", "power line: online"}));
    }

    void anIdlePcWaitsForNothing()
    {
        ManualClock clock;
        SimHost host(from(R"({"title":"t","at":[{"seconds":20,"acLine":"offline"}]})"),
                     options(clock));
        host.start();
        QVERIFY(!clock.idle());
        clock.advance(20000);
        QVERIFY(clock.idle());
        host.pc().timeline.after(100, [] {});
        QVERIFY(!clock.idle());
        clock.advance(100);
        QVERIFY(clock.idle());
    }

    void whatIsPlannedLaterButDueEarlierComesInTime()
    {
        ManualClock clock;
        SimHost host(from(R"({"title":"t"})"), options(clock));
        EventWatcher watcher(host.pc());
        host.start();
        for (const int due : {500, 100, 300, 100})
            host.pc().timeline.after(due,
                                     [&host, due] { host.pc().events.add(QString::number(due)); });
        clock.advance(100);
        QCOMPARE(watcher.lines(), QStringList({"100", "100"}));
        clock.advance(200);
        QCOMPARE(watcher.lines(), QStringList({"100", "100", "300"}));
        clock.advance(200);
        QCOMPARE(watcher.lines(), QStringList({"100", "100", "300", "500"}));
        QVERIFY(clock.idle());
    }

    void planningSomethingLaterAddsNoWait()
    {
        CountingClock clock;
        SimHost host(from(R"({"title":"t","at":[{"seconds":1,"acLine":"offline"}]})"),
                     options(clock));
        host.start();
        QCOMPARE(clock.waits(), 1);
        for (int i = 0; i < 10; ++i)
            host.pc().timeline.after(2000, [] {});
        QCOMPARE(clock.waits(), 1);
        clock.manual().advance(1000);
        QCOMPARE(clock.waits(), 2);
        clock.manual().advance(1000);
        QCOMPARE(clock.waits(), 2);
    }

    void beforeTheStartThingsHappenOnlyWhenAskedFor()
    {
        ManualClock clock;
        SimHost host(from(R"({"title":"t","at":[{"seconds":1,"acLine":"offline"},
                                            {"seconds":3,"acLine":"online"}]})"),
                     options(clock));
        EventWatcher watcher(host.pc());
        clock.advance(1000);
        QCOMPARE(watcher.lines(), QStringList());
        QCOMPARE(host.pc().facts.acLine.get(), answers::AcLine(power::AcLine::Offline));
        QCOMPARE(watcher.lines().size(), 1);
        // The time runs from the beginning, not from the start.
        host.start();
        clock.advance(2000);
        QCOMPARE(watcher.lines().size(), 2);
    }

    void afterTheEndNothingHappensByItself()
    {
        ManualClock clock;
        SimHost host(from(R"({"title":"t","at":[{"seconds":1,"acLine":"offline"}]})"),
                     options(clock));
        EventWatcher watcher(host.pc());
        host.start();
        host.stop();
        host.stop();
        clock.advance(5000);
        QCOMPARE(watcher.lines(), QStringList());
        QCOMPARE(host.pc().facts.acLine.get(), answers::AcLine(power::AcLine::Offline));
    }

    void inRealTimeThingsHappenToo()
    {
        SimHost host(from(R"({"title":"t","at":[{"seconds":0.05,"acLine":"offline"},
                                            {"seconds":0.1,"acLine":"online"}]})"),
                     options(Clock::system()));
        EventWatcher watcher(host.pc());
        host.start();
        QVERIFY(watcher.waitFor("power line: online"));
        QCOMPARE(watcher.lines(), QStringList({"power line: offline", "power line: online"}));
    }

    void theJournalFileHoldsDeedsAndHappenings()
    {
        ManualClock clock;
        clock.advance(5000);
        SimHost::Options with = options(clock);
        with.settings.journal = path("journal");
        SimHost host(from(R"({"title":"t","at":[{"seconds":1.25,"acLine":"offline"}]})"), with);
        host.start();
        clock.advance(2000);
        host.pc().journal.add("cell write 0");
        QCOMPARE(readFile("journal"), QByteArray("    1.250 pc     : power line: offline\n"
                                                 "    2.000 program: cell write 0\n"));
    }
};

KOLM_TEST_MAIN(SimHostTest)
#include "tst_sim_host.moc"
