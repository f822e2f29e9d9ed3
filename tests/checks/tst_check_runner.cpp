#include "base/manual_clock.h"
#include "base/threads.h"
#include "checks/check_runner.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

#include <atomic>

using namespace checks;
using namespace std::chrono_literals;

namespace {

Found portsTaken(const Facts &facts)
{
    if (!facts.portHolders || facts.portHolders->isEmpty())
        return std::nullopt;
    return std::vector<Evidence>{{"", facts.portHolders->join(',')}};
}

Check ports()
{
    Check check;
    check.id = "ports";
    check.find = portsTaken;
    return check;
}

// A question whose answer the test chooses.
struct Asked
{
    explicit Asked(Question::When when, std::chrono::milliseconds again = 0ms)
    {
        question.when = when;
        question.again = again;
        question.ask = [this](const Facts &) -> Question::Answer {
            ++count;
            const QStringList holders = taken ? QStringList{"node.exe"} : QStringList();
            return [holders](Facts &facts) { facts.portHolders = holders; };
        };
    }

    Table table() const
    {
        Check check = ports();
        check.question = &question;
        return {check};
    }

    Question question;
    std::atomic<int> count{0};
    std::atomic<bool> taken{false};
};

void wait(CheckRunner &runner)
{
    QTRY_VERIFY(!runner.model().isAsking());
}

} // namespace

class TestCheckRunner : public TestCase
{
    Q_OBJECT

private slots:
    void whatIsLearnedIsJudged()
    {
        ManualClock clock;
        Check check = ports();
        check.hold = 10s;
        const Table table = {check};
        CheckRunner runner(clock, table);
        runner.facts().portHolders = QStringList{"node.exe"};
        QCOMPARE(runner.model().count(), 0);
        runner.judge();
        QCOMPARE(runner.model().count(), 0);
        clock.advance(10000);
        runner.judge();
        QCOMPARE(runner.model().count(), 1);
        runner.facts().portHolders = QStringList();
        runner.judge();
        QCOMPARE(runner.model().count(), 0);
    }

    void theStartAsksWhatBelongsToIt()
    {
        ManualClock clock;
        Asked atStart(Question::AtStart);
        Asked whileHanging(Question::WhileHanging);
        Table table = atStart.table();
        table.push_back(whileHanging.table()[0]);
        CheckRunner runner(clock, table);
        atStart.taken = true;
        runner.start();
        wait(runner);
        QCOMPARE(atStart.count, 1);
        QCOMPARE(whileHanging.count, 0);
        // Judged as soon as it came.
        QCOMPARE(runner.model().count(), 2);
    }

    void whatTheStartHadNoThreadForIsAskedLater()
    {
        ManualClock clock;
        Asked atStart(Question::AtStart, 60s);
        const Table table = atStart.table();
        CheckRunner runner(clock, table);
        {
            const threads::NoneToHave none;
            announce("no thread for facts: Resource temporarily unavailable");
            runner.start();
            runner.judge();
            QVERIFY(!runner.model().isAsking());
        }
        QCOMPARE(atStart.count, 0);
        for (int i = 0; i < 2; ++i) {
            runner.judge();
            wait(runner);
            QCOMPARE(atStart.count, 1);
        }
    }

    void nothingIsAskedWhileNothingHangs()
    {
        ManualClock clock;
        Asked asked(Question::WhileHanging);
        const Table table = asked.table();
        CheckRunner runner(clock, table);
        runner.start();
        const auto poll = [&](int reached, int times) {
            runner.facts().reached = reached;
            for (int i = 0; i < times; ++i) {
                runner.judge();
                wait(runner);
                clock.advance(5000);
            }
        };
        poll(0, 4); // 0 to 15 s
        poll(1, 4);
        poll(2, 4);
        poll(stageCount, 20);
        QCOMPARE(asked.count, 0);
    }

    void whatHangsIsAskedAboutEveryTime()
    {
        ManualClock clock;
        Asked asked(Question::WhileHanging);
        const Table table = asked.table();
        CheckRunner runner(clock, table);
        runner.facts().reached = 2;
        runner.judge();
        clock.advance(19999);
        runner.judge();
        wait(runner);
        QCOMPARE(asked.count, 0);
        clock.advance(1);
        runner.judge();
        wait(runner);
        QCOMPARE(asked.count, 1);
        runner.judge();
        wait(runner);
        QCOMPARE(asked.count, 2);
        runner.facts().reached = 3;
        runner.judge();
        wait(runner);
        QCOMPARE(asked.count, 2);
    }

    void beforeAnybodyLookedNothingHangs()
    {
        ManualClock clock;
        Asked asked(Question::WhileHanging);
        const Table table = asked.table();
        CheckRunner runner(clock, table);
        clock.advance(60000);
        runner.judge();
        wait(runner);
        QCOMPARE(asked.count, 0);
    }

    // So that it goes away by itself.
    void whatIsFoundIsAskedForUntilItIsOver()
    {
        ManualClock clock;
        Asked asked(Question::AtStart);
        const Table table = asked.table();
        CheckRunner runner(clock, table);
        asked.taken = true;
        runner.start();
        wait(runner);
        QCOMPARE(runner.model().count(), 1);
        asked.taken = false;
        runner.judge();
        wait(runner);
        QCOMPARE(asked.count, 2);
        QCOMPARE(runner.model().count(), 0);
        runner.judge();
        wait(runner);
        QCOMPARE(asked.count, 2);
    }

    void whatCostsIsAskedAgainAfterItsTime()
    {
        ManualClock clock;
        Asked asked(Question::AtStart, 60s);
        const Table table = asked.table();
        CheckRunner runner(clock, table);
        asked.taken = true;
        runner.start();
        wait(runner);
        clock.advance(59999);
        runner.judge();
        wait(runner);
        QCOMPARE(asked.count, 1);
        clock.advance(1);
        runner.judge();
        wait(runner);
        QCOMPARE(asked.count, 2);
    }

    void aQuestionOfSeveralRowsIsAskedOnce()
    {
        ManualClock clock;
        Asked asked(Question::AtStart);
        Table table = asked.table();
        table.push_back(table[0]);
        CheckRunner runner(clock, table);
        runner.askAll();
        wait(runner);
        QCOMPARE(asked.count, 1);
    }

    void actionsAreCarriedOutOrHandedOn()
    {
        ManualClock clock;
        Asked asked(Question::WhileHanging);
        Table table(4, asked.table()[0]);
        table[0].action = {Action::CheckAgain, "again"};
        table[1].action = {Action::OpenPage, "page", "SystemInfoPage"};
        table[2].action = {Action::OpenUrl, "url", "ms-settings:network"};
        CheckRunner runner(clock, table);
        runner.facts().portHolders = QStringList{"node.exe"};
        asked.taken = true;
        QStringList wanted;
        connect(&runner.model(), &CheckModel::pageWanted,
                [&](const QString &page) { wanted << "page " + page; });
        connect(&runner, &CheckRunner::actionWanted, [&](const Action &action) {
            wanted << QString("%1 %2").arg(action.kind).arg(action.target);
        });
        runner.judge();
        wait(runner);
        const int before = asked.count;
        runner.model().act(0);
        wait(runner);
        QCOMPARE(asked.count, before + 1);
        QCOMPARE(wanted, QStringList());
        for (int row = 1; row < 4; ++row)
            runner.model().act(row);
        QCOMPARE(wanted, QStringList({"page SystemInfoPage",
                                      QString("%1 ms-settings:network").arg(Action::OpenUrl)}));
    }
};

KOLM_TEST_MAIN(TestCheckRunner)
#include "tst_check_runner.moc"
