#include "base/background.h"
#include "tests/support/gate.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>
#include <QThread>

#include <memory>

using namespace std::chrono_literals;

class TestBackground : public TestCase
{
    Q_OBJECT

    QStringList taken_;

    Background::Work saying(const QString &text)
    {
        return [this, text]() -> Background::Result { return [this, text] { taken_ += text; }; };
    }

private slots:
    void init()
    {
        TestCase::init();
        taken_.clear();
    }

    void workIsDoneElsewhereAndItsResultTakenHere()
    {
        QThread *worked = nullptr;
        QThread *taken = nullptr;
        Background background("a test");
        background.run([&]() -> Background::Result {
            worked = QThread::currentThread();
            return [&] { taken = QThread::currentThread(); };
        });
        QVERIFY(background.isBusy());
        QTRY_VERIFY(taken);
        QCOMPARE(taken, QThread::currentThread());
        QVERIFY(worked && worked != taken);
        QVERIFY(!background.isBusy());
    }

    void workIsDoneInItsOrderAndResultsThatComeTogetherAreToldOnce()
    {
        Gate gate;
        Background background("a test");
        QSignalSpy told(&background, &Background::resultsTaken);
        background.run([&]() -> Background::Result {
            gate.pass();
            return {}; // nothing is made of it
        });
        gate.waitUntilReached();
        for (const char *text : {"a", "b", "c"})
            background.run(saying(text));
        QCOMPARE(taken_, QStringList());
        gate.open();
        QTRY_COMPARE(taken_, QStringList({"a", "b", "c"}));
        QVERIFY(told.size() >= 1 && told.size() <= 4);
        QTRY_VERIFY(!background.isBusy());
    }

    void theEndWaitsForTheWorkAtHandAndForNothingElse()
    {
        Gate gate;
        bool finished = false;
        auto background = std::make_unique<Background>("a test", 10min);
        background->run([&]() -> Background::Result {
            gate.pass();
            finished = true;
            return [this] { taken_ += "late"; };
        });
        background->run(
            [this]() -> Background::Result { return [this] { taken_ += "never begun"; }; });
        gate.waitUntilReached();
        gate.open();
        background.reset();
        QVERIFY(finished);
        QCoreApplication::processEvents();
        QCOMPARE(taken_, QStringList());
    }

    void theEndLeavesBehindWhatTakesTooLong()
    {
        // Shared: the thread outlives this function's end.
        const auto gate = std::make_shared<Gate>();
        const auto passed = std::make_shared<Gate>();
        auto background = std::make_unique<Background>("a test", 0ms);
        background->run([gate, passed]() -> Background::Result {
            gate->pass();
            passed->pass();
            return {};
        });
        gate->waitUntilReached();
        background.reset(); // comes back although the work does not
        gate->open();
        passed->waitUntilReached(); // it went on by itself
        passed->open();
    }

    void withoutWorkThereIsNothingToEnd()
    {
        Background background("a test");
        QVERIFY(!background.isBusy());
    }
};

KOLM_TEST_MAIN(TestBackground)
#include "tst_background.moc"
