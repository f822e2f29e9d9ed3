#include "base/manual_clock.h"
#include "simpc/sim_pc.h"
#include "tests/link/semaphore.h"
#include "tests/support/test_case.h"

#include <atomic>
#include <thread>

class SimTimelineTest : public TestCase
{
    Q_OBJECT

private slots:
    void changesHappenInTheOrderOfTheirTimesBeforeTheNextAnswer()
    {
        ManualClock clock;
        SimPc pc(clock);
        QStringList order;
        pc.timeline.after(300, [&] { order.append("late"); });
        pc.timeline.after(100, [&] {
            order.append("early");
            pc.facts.acLine.set(power::AcLine::Offline);
        });
        clock.advance(99);
        QCOMPARE(pc.facts.acLine.get(), answers::AcLine(power::AcLine::Online));
        clock.advance(1);
        QCOMPARE(pc.facts.acLine.get(), answers::AcLine(power::AcLine::Offline));
        QCOMPARE(order, QStringList({"early"}));
        clock.advance(1000);
        pc.timeline.settle();
        pc.timeline.settle();
        QCOMPARE(order, QStringList({"early", "late"}));
    }

    void changesOfOneMomentHappenInTheOrderInWhichTheyWerePlanned()
    {
        ManualClock clock;
        SimPc pc(clock);
        QString order;
        for (const char letter : {'a', 'b', 'c', 'd'})
            pc.timeline.after(10, [&order, letter] { order.append(letter); });
        clock.advance(10);
        pc.timeline.settle();
        QCOMPARE(order, QString("abcd"));
    }

    void aChainOfChangesKeepsItsTimesHoweverLateSomebodyAsks()
    {
        ManualClock clock;
        SimPc pc(clock);
        QStringList order;
        const auto note = [&](const char *what) {
            order.append(QString("%1 at %2").arg(what).arg(pc.timeline.now()));
        };
        pc.timeline.after(100, [&] {
            note("first");
            pc.timeline.after(50, [&] {
                note("second");
                pc.timeline.after(500, [&] { note("third"); });
            });
        });
        pc.timeline.after(120, [&] { note("between"); });
        clock.advance(600);
        pc.timeline.settle();
        QCOMPARE(order, QStringList({"first at 100", "between at 120", "second at 150"}));
        QCOMPARE(pc.timeline.now(), qint64(600));
        QCOMPARE(pc.timeline.nextChange().value_or(-1), qint64(650));
    }

    void aQuestionWithinAChangeDoesNotStartTheNextOne()
    {
        ManualClock clock;
        SimPc pc(clock);
        answers::AcLine acLineSeen;
        pc.timeline.after(10, [&] { acLineSeen = pc.facts.acLine.get(); });
        pc.timeline.after(20, [&] { pc.facts.acLine.set(power::AcLine::Offline); });
        clock.advance(30);
        pc.timeline.settle();
        QCOMPARE(acLineSeen, answers::AcLine(power::AcLine::Online));
        QCOMPARE(pc.facts.acLine.get(), answers::AcLine(power::AcLine::Offline));
    }

    void nobodyIsAnsweredWhileAnotherThreadLetsSomethingHappen()
    {
        ManualClock clock;
        SimPc pc(clock);
        Semaphore halfway;
        Semaphore goOn;
        pc.timeline.after(10, [&] {
            pc.facts.acLine.set(power::AcLine::Offline);
            halfway.release();
            QVERIFY(goOn.acquire());
            pc.processes.start("steam.exe");
        });
        clock.advance(10);
        std::thread other([&] { pc.timeline.settle(); });
        QVERIFY(halfway.acquire());
        std::atomic<bool> asked{false};
        bool seen = false;
        std::thread asker([&] {
            asked = true;
            seen = pc.processes.isRunning("steam.exe");
        });
        while (!asked)
            std::this_thread::yield();
        goOn.release();
        other.join();
        asker.join();
        QVERIFY(seen);
    }

    void theNextChangeIsToldAndItsPlanningAnnounced()
    {
        ManualClock clock;
        SimPc pc(clock);
        int announced = 0;
        pc.timeline.onPlanned([&] { ++announced; });
        QVERIFY(!pc.timeline.nextChange());
        pc.timeline.after(500, [] {});
        pc.timeline.after(200, [] {});
        QCOMPARE(announced, 2);
        QCOMPARE(pc.timeline.nextChange().value_or(-1), qint64(200));
        clock.advance(200);
        pc.timeline.settle();
        QCOMPARE(pc.timeline.nextChange().value_or(-1), qint64(500));
        pc.timeline.onPlanned(nullptr);
        pc.timeline.after(1, [] {});
        QCOMPARE(announced, 2);
    }
};

KOLM_TEST_MAIN(SimTimelineTest)
#include "tst_sim_timeline.moc"
