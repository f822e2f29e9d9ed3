#include "base/long_wait.h"
#include "base/manual_clock.h"
#include "tests/support/test_case.h"

using namespace std::chrono_literals;
using long_wait::Choice;
using long_wait::LongWait;
using long_wait::Subject;

namespace {

// Whoever is told, and what was told so far.
struct Person
{
    struct Told
    {
        Subject subject;
        std::chrono::milliseconds lasted;
    };

    class Ear : public long_wait::Telling
    {
    public:
        explicit Ear(Person &person) : person_(person) { ++person_.listening; }
        ~Ear() override { --person_.listening; }
        std::optional<Choice> choice() override { return person_.choice; }

    private:
        Person &person_;
    };

    long_wait::Tell tell()
    {
        return [this](const Subject &subject, std::chrono::milliseconds lasted) {
            told.push_back({subject, lasted});
            return std::make_unique<Ear>(*this);
        };
    }

    std::vector<Told> told;
    int listening = 0;
    std::optional<Choice> choice;
};

} // namespace

class LongWaitTest : public TestCase
{
    Q_OBJECT

private slots:
    void nobodyIsToldOfAShortWait()
    {
        LongWait wait(clock_, {"a", false}, person_.tell());
        clock_.advance(2999ms);
        QCOMPARE(wait.turn(), Choice::KeepWaiting);
        QCOMPARE(person_.told.size(), std::size_t(0));
    }

    void aWaitThatLastsIsToldOfOnce()
    {
        clock_.advance(7s); // before it begins
        LongWait wait(clock_, {"a", true}, person_.tell());
        clock_.advance(3s);
        for (int i = 0; i < 3; ++i)
            QCOMPARE(wait.turn(), Choice::KeepWaiting);
        QCOMPARE(person_.told.size(), std::size_t(1));
        QCOMPARE(person_.told[0].subject.key, QString("a"));
        QVERIFY(person_.told[0].subject.canEnd);
        QCOMPARE(person_.told[0].lasted, 3000ms);
        QCOMPARE(person_.listening, 1);
    }

    void theEndOfTheWaitEndsTheTelling()
    {
        {
            LongWait wait(clock_, {"a", false}, person_.tell());
            clock_.advance(3s);
            Q_UNUSED(wait.turn());
            QCOMPARE(person_.listening, 1);
        }
        QCOMPARE(person_.listening, 0);
    }

    void whoWantsToWaitIsNotToldAgain()
    {
        LongWait wait(clock_, {"a", false}, person_.tell());
        tellAndChoose(wait, Choice::KeepWaiting);
        QCOMPARE(wait.turn(), Choice::KeepWaiting);
        QCOMPARE(person_.listening, 0);
        clock_.advance(60s);
        QCOMPARE(wait.turn(), Choice::KeepWaiting);
        QCOMPARE(person_.told.size(), std::size_t(1));
    }

    void programsAreEndedOnceAndThenToldOfAnew()
    {
        LongWait wait(clock_, {"a", true}, person_.tell());
        tellAndChoose(wait, Choice::EndPrograms);
        clock_.advance(1s);
        QCOMPARE(wait.turn(), Choice::EndPrograms);
        QCOMPARE(person_.listening, 0);
        clock_.advance(2999ms);
        QCOMPARE(wait.turn(), Choice::KeepWaiting);
        QCOMPARE(person_.told.size(), std::size_t(1));
        clock_.advance(1ms);
        person_.choice.reset();
        QCOMPARE(wait.turn(), Choice::KeepWaiting);
        QCOMPARE(person_.told.size(), std::size_t(2));
        QCOMPARE(person_.told[1].lasted, 7000ms);
    }

    void goingOnIsHandedOn()
    {
        LongWait wait(clock_, {"a", false}, person_.tell());
        tellAndChoose(wait, Choice::GoOn);
        QCOMPARE(wait.turn(), Choice::GoOn);
        QCOMPARE(wait.turn(), Choice::KeepWaiting);
    }

    void whoCannotBeToldIsAskedOnce()
    {
        int asked = 0;
        LongWait wait(clock_, {"a", false}, [&](const Subject &, std::chrono::milliseconds) {
            ++asked;
            return nullptr;
        });
        for (int i = 0; i < 5; ++i) {
            clock_.advance(3s);
            QCOMPARE(wait.turn(), Choice::KeepWaiting);
        }
        QCOMPARE(asked, 1);
    }

    void nobodyNeedBeThere()
    {
        LongWait wait(clock_, {"a", false}, nullptr);
        clock_.advance(60s);
        QCOMPARE(wait.turn(), Choice::KeepWaiting);
    }

    void init()
    {
        TestCase::init();
        person_ = Person();
    }

private:
    void tellAndChoose(LongWait &wait, Choice choice)
    {
        clock_.advance(3s);
        QCOMPARE(wait.turn(), Choice::KeepWaiting);
        QCOMPARE(person_.listening, 1);
        person_.choice = choice;
    }

    ManualClock clock_;
    Person person_;
};

KOLM_TEST_MAIN(LongWaitTest)
#include "tst_long_wait.moc"
