#include "tests/steamvr/steam_fixture.h"
#include "tests/support/eventually.h"
#include "tests/support/test_case.h"

#include <QCoreApplication>
#include <QFile>

#include <atomic>
#include <thread>

#include <sys/file.h>

using long_wait::Choice;

namespace {

// Is told of waits, and makes a choice at once.
struct Person
{
    class Answer : public long_wait::Telling
    {
    public:
        explicit Answer(Person &person) : person_(person) { ++person_.told; }
        ~Answer() override { ++person_.released; }
        std::optional<Choice> choice() override { return person_.choice; }

    private:
        Person &person_;
    };

    long_wait::Tell tell(const ManualClock &clock)
    {
        return [this, &clock](const long_wait::Subject &about, std::chrono::milliseconds) {
            subject = about;
            toldAt = clock.elapsed();
            return std::make_unique<Answer>(*this);
        };
    }

    std::optional<Choice> choice;
    long_wait::Subject subject;
    qint64 toldAt = -1;
    std::atomic<int> told{0};
    int released = 0;
};

} // namespace

// SteamVR that does not close, and a shared cell that does not come free.
class TestSteamVRWaits : public TestCase
{
    Q_OBJECT

private slots:
    void aStopOfThreeSecondsIsToldOfAndEndsByItself()
    {
        SteamFixture pc(dir());
        Person person;
        runSteamVR(pc, 6500);
        pc.tell = person.tell(pc.clock);
        const qint64 begin = pc.clock.elapsed();
        pc.steam().stopSteamVR();
        QCOMPARE(person.told.load(), 1);
        QCOMPARE(person.released, 1);
        // The command takes 2500 of it; the look after it is at 3500.
        QCOMPARE(person.toldAt - begin, 3500);
        QCOMPARE(person.subject.key, QString("steamvr"));
        QVERIFY(person.subject.canEnd);
        QCOMPARE(pc.pc.journal.lines().size(), 1); // nothing is ended
    }

    void aShortStopIsNot()
    {
        SteamFixture pc(dir());
        Person person;
        runSteamVR(pc, 2900);
        pc.tell = person.tell(pc.clock);
        pc.steam().stopSteamVR();
        QCOMPARE(person.told.load(), 0);
    }

    void whatDoesNotCloseIsEndedWhenTheUserSaysSo()
    {
        SteamFixture pc(dir());
        Person person;
        person.choice = Choice::EndPrograms;
        runSteamVR(pc, -1);
        pc.pc.processes.start("vrcompositor.exe");
        pc.pc.processes.start("steam.exe");
        pc.tell = person.tell(pc.clock);
        announce("[steam] the user ends SteamVR, which does not close");
        pc.steam().stopSteamVR();
        QCOMPARE(pc.pc.journal.lines().mid(1),
                 QStringList({"terminate vrserver.exe", "terminate vrcompositor.exe"}));
        QVERIFY(pc.pc.processes.isRunning("steam.exe"));
        // Told at 3500, asked a second later, looked again after one more.
        QCOMPARE(pc.clock.slept(), 5500 + 2500);
    }

    void whoeverDoesNotWaitGoesOn()
    {
        SteamFixture pc(dir());
        Person person;
        person.choice = Choice::GoOn;
        runSteamVR(pc, -1);
        pc.tell = person.tell(pc.clock);
        announce("[steam] the user goes on although SteamVR does not close");
        pc.steam().stopSteamVR();
        QVERIFY(pc.pc.processes.isRunning("vrserver.exe"));
        QCOMPARE(pc.clock.slept(), 4500 + 2500);
        QCOMPARE(loggedCount("[steam] stopSteamVR"), 1);
    }

    void aCellThatAnotherHoldsIsToldOf()
    {
        const QString file = path("cell");
        SteamFixture pc(dir(), std::make_unique<SimCell>(file));
        QVERIFY(pc.pc.cell().write(1));
        Person person;
        person.choice = Choice::GoOn;
        pc.tell = person.tell(pc.clock);
        pc.steamRuns();
        pc.pc.launches.on("explorer", [](const SimLaunch &) { return SimLaunchResult{}; });
        QFile held(file);
        QVERIFY(held.open(QIODevice::ReadWrite));
        QCOMPARE(flock(held.handle(), LOCK_EX), 0);
        std::atomic<bool> over{false};
        std::thread time([&] {
            eventually(
                [&] {
                    pc.clock.sleep(std::chrono::milliseconds(1));
                    return over.load();
                },
                60000);
        });
        announce("[steam] the user goes on although another program holds the shared memory");
        pc.steam().startSteamVR();
        over = true;
        time.join();
        QCOMPARE(person.told.load(), 1);
        QCOMPARE(person.subject.key, QString("cell"));
        QVERIFY(!person.subject.canEnd);
        // SteamVR is started all the same, and nothing was written.
        QCOMPARE(pc.pc.journal.lines(), QStringList{"launch explorer steam://rungameid/250820"});
        quint32 value = 0;
        held.close();
        QVERIFY(pc.pc.cell().read(&value));
        QCOMPARE(value, 1u);
    }

    void theEndDoesNotWaitForWhoeverHoldsTheCell()
    {
        const QString file = path("cell");
        SteamFixture pc(dir(), std::make_unique<SimCell>(file));
        pc.steamRuns();
        pc.pc.launches.on("explorer", [](const SimLaunch &) { return SimLaunchResult{}; });
        pc.steam().startSteamVR();
        QFile held(file);
        QVERIFY(held.open(QIODevice::ReadWrite));
        QCOMPARE(flock(held.handle(), LOCK_EX), 0);
        const qint64 begin = pc.clock.elapsed();
        std::thread look([&] { pc.clock.advance(50); }); // until the watcher has looked
        QVERIFY(eventually([&] { return pc.clock.elapsed() == begin + 50; }));
        pc.dropSteam();
        look.join();
        QVERIFY(pc.clock.idle());
    }

private:
    // Runs until so many milliseconds after it was told to close; below 0: on and on.
    static void runSteamVR(SteamFixture &pc, int closes)
    {
        pc.installSteamVR();
        pc.pc.processes.start("vrserver.exe");
        pc.pc.launches.on("vrstartup.exe", [&pc, closes](const SimLaunch &) {
            if (closes >= 0)
                pc.pc.timeline.after(closes, [&pc] { pc.pc.processes.endAll("vrserver.exe"); });
            return SimLaunchResult{true, 0, true, 2500};
        });
    }
};

KOLM_TEST_MAIN(TestSteamVRWaits)
#include "tst_steamvr_waits.moc"
