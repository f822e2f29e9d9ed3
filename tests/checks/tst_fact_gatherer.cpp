#include "base/manual_clock.h"
#include "base/threads.h"
#include "checks/fact_gatherer.h"
#include "tests/support/gate.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>
#include <QThread>

#include <thread>

using checks::Question;
using namespace std::chrono_literals;

namespace {

Question quick(const char *value)
{
    Question question;
    question.ask = [value](const Facts &known) -> Question::Answer {
        const QString text = known.cpuName + value;
        return [text](Facts &facts) { facts.networkCategory = text; };
    };
    return question;
}

Facts withCpu(const QString &name)
{
    Facts facts;
    facts.cpuName = name;
    return facts;
}

// What was learned, in the order in which it came.
struct Learned
{
    explicit Learned(FactGatherer &gatherer)
    {
        QObject::connect(&gatherer, &FactGatherer::answered, [this](const auto &answer) {
            Facts facts;
            answer(facts);
            texts.append(facts.networkCategory.value_or("(nothing)"));
        });
    }
    QStringList texts;
};

} // namespace

class TestFactGatherer : public TestCase
{
    Q_OBJECT

private slots:
    void anAnswerComesOnTheOwnersThreadAndFromAnother()
    {
        QThread *asked = nullptr;
        QThread *answered = nullptr;
        Question question;
        question.ask = [&](const Facts &) -> Question::Answer {
            asked = QThread::currentThread();
            return [&](Facts &) { answered = QThread::currentThread(); };
        };
        FactGatherer gatherer;
        Learned learned(gatherer);
        gatherer.ask(question, {});
        QTRY_COMPARE(learned.texts.size(), 1);
        QCOMPARE(answered, thread());
        QVERIFY(asked != thread());
        QVERIFY(!gatherer.isBusy());
    }

    void theQuestionSeesWhatWasKnownWhenItWasPut()
    {
        const Question question = quick(" and more");
        FactGatherer gatherer;
        Learned learned(gatherer);
        Facts known = withCpu("i7");
        gatherer.ask(question, known);
        known.cpuName = "changed";
        QTRY_COMPARE(learned.texts, QStringList{"i7 and more"});
    }

    // Ten seconds in which the window draws on.
    void theOwnerNeverWaitsForAnAnswer()
    {
        ManualClock clock;
        Gate gate;
        Question slow;
        slow.ask = [&](const Facts &) -> Question::Answer {
            gate.pass();
            return [](Facts &facts) { facts.networkCategory = "at last"; };
        };
        FactGatherer gatherer;
        Learned learned(gatherer);
        int frames = 0;
        const std::function<void()> draw = [&] {
            ++frames;
            clock.singleShot(100ms, this, draw);
        };
        draw();
        gatherer.ask(slow, {});
        gate.waitUntilReached();
        for (int i = 0; i < 100; ++i) {
            clock.advance(100);
            QCoreApplication::processEvents();
        }
        QCOMPARE(frames, 101);
        QCOMPARE(learned.texts, QStringList());
        QVERIFY(gatherer.isBusy());
        gate.open();
        QTRY_COMPARE(learned.texts, QStringList{"at last"});
    }

    void questionsAreAskedOneAfterTheOtherAndOnce()
    {
        Gate gate;
        int asked = 0;
        Question slow;
        slow.ask = [&](const Facts &) -> Question::Answer {
            ++asked;
            gate.pass();
            return [](Facts &facts) { facts.networkCategory = "slow"; };
        };
        const Question first = quick("first");
        const Question second = quick("second");
        FactGatherer gatherer;
        Learned learned(gatherer);
        gatherer.ask(slow, {});
        gate.waitUntilReached();
        for (int i = 0; i < 3; ++i) {
            gatherer.ask(slow, {}); // is being asked
            gatherer.ask(first, {});
            gatherer.ask(second, {});
        }
        gate.open();
        QTRY_VERIFY(!gatherer.isBusy());
        QCOMPARE(learned.texts, QStringList({"slow", "first", "second"}));
        QCOMPARE(asked, 1);
    }

    void aQuestionCanBePutAgainWhenItIsAnswered()
    {
        const Question question = quick("again");
        FactGatherer gatherer;
        Learned learned(gatherer);
        gatherer.ask(question, {});
        QTRY_COMPARE(learned.texts.size(), 1);
        gatherer.ask(question, {});
        QTRY_COMPARE(learned.texts.size(), 2);
    }

    void aQuestionWithoutAThreadIsNotPutAndCanBePutLater()
    {
        const Question question = quick("later");
        FactGatherer gatherer;
        Learned learned(gatherer);
        {
            const threads::NoneToHave none;
            announce("no thread for facts: Resource temporarily unavailable");
            QVERIFY(!gatherer.ask(question, {}));
            QVERIFY(!gatherer.isBusy());
        }
        QVERIFY(gatherer.ask(question, {}));
        QTRY_COMPARE(learned.texts, QStringList("later"));
    }

    void theEndWaitsForAnAnswerAndDropsIt()
    {
        Gate gate;
        std::atomic<bool> over{false};
        Question slow;
        slow.ask = [&](const Facts &) -> Question::Answer {
            gate.pass();
            over = true;
            return {};
        };
        const Question never = quick("never");
        std::thread opener;
        int answers = 0;
        {
            FactGatherer gatherer;
            connect(&gatherer, &FactGatherer::answered, this, [&] { ++answers; });
            gatherer.ask(slow, {});
            gatherer.ask(never, {});
            gate.waitUntilReached();
            opener = std::thread([&] { gate.open(); });
        }
        opener.join();
        QVERIFY(over);
        QCoreApplication::processEvents();
        QCOMPARE(answers, 0);
    }

    // Windows may never answer; the program ends all the same.
    void theEndLeavesBehindWhatTakesTooLong()
    {
        static Gate gate;
        static Gate done;
        Question slow;
        slow.ask = [](const Facts &) -> Question::Answer {
            gate.pass();
            done.open();
            return {};
        };
        {
            FactGatherer gatherer(0ms);
            gatherer.ask(slow, {});
            gate.waitUntilReached();
        }
        gate.open();
        done.pass();
    }

    void withoutAQuestionThereIsNothingToEnd()
    {
        const FactGatherer gatherer;
        QVERIFY(!gatherer.isBusy());
    }
};

KOLM_TEST_MAIN(TestFactGatherer)
#include "tst_fact_gatherer.moc"
