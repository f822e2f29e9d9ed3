#include "base/background.h"
#include "base/detached_output.h"
#include "base/threads.h"
#include "tests/support/test_case.h"
#include "tests/support/used_up_threads.h"

#include <QTemporaryFile>

#include <atomic>

// What becomes of work for which the system has no thread.
class TestThreads : public TestCase
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        threads::noteBegun("this");
        threads::noteBegun("that");
        TestCase::cleanup();
    }

    void workRunsElsewhere()
    {
        std::thread::id worked;
        std::thread thread =
            threads::begin("this", [&worked] { worked = std::this_thread::get_id(); });
        QVERIFY(thread.joinable());
        thread.join();
        QVERIFY(worked != std::thread::id() && worked != std::this_thread::get_id());
        QCOMPARE(threads::missing(), QStringList());
    }

    void whatHasNoThreadIsNamedOnceUntilItHasOne()
    {
        const QString reason = "no thread for this: Resource temporarily unavailable";
        {
            const threads::NoneToHave none;
            announce(reason);
            for (int i = 0; i < 3; ++i)
                QVERIFY(!threads::begin("this", [] { QFAIL("it runs"); }).joinable());
            announce("no thread for that: Resource temporarily unavailable");
            QVERIFY(!threads::begin("that", [] {}).joinable());
            QVERIFY(!threads::beginQuietly([] {}).joinable());
        }
        QCOMPARE(threads::missing(), QStringList({"this", "that"}));
        QCOMPARE(threads::lastReason(), QString("Resource temporarily unavailable"));
        threads::begin("this", [] {}).join();
        QCOMPARE(threads::missing(), QStringList("that"));
        // It is news again.
        const threads::NoneToHave none;
        announce(reason);
        QVERIFY(!threads::begin("this", [] {}).joinable());
    }

    void theSystemsOwnRefusalIsTakenAsOne()
    {
        bool isUsedUp = false;
        bool begun = true;
        {
            const UsedUpThreads none;
            isUsedUp = none.isSo();
            if (isUsedUp) {
                announce("no thread for this: Resource temporarily unavailable");
                begun = threads::begin("this", [] {}).joinable();
            }
        }
        if (!isUsedUp)
            QSKIP("This system cannot be brought to refuse a thread.");
        QVERIFY(!begun);
        QCOMPARE(threads::missing(), QStringList("this"));
        threads::begin("this", [] {}).join();
    }

    void workInTheBackgroundIsDoneOnceThereIsAThread()
    {
        bool done = false;
        Background background("this");
        const auto work = [&done]() -> Background::Result { return [&done] { done = true; }; };
        {
            const threads::NoneToHave none;
            announce("no thread for this: Resource temporarily unavailable");
            QVERIFY(!background.run(work));
            QVERIFY(!background.isBusy());
        }
        QVERIFY(background.run(work));
        QTRY_VERIFY(done);
    }

    void backgroundThatHadNoThreadEndsAtOnce()
    {
        const threads::NoneToHave none;
        announce("no thread for this: Resource temporarily unavailable");
        Background background("this", std::chrono::hours(1));
        background.run([]() -> Background::Result { return {}; });
    }

    void outputThatHasNoThreadIsLostAndNobodyWaitsForIt()
    {
        QTemporaryFile file(path("output"));
        QVERIFY(file.open());
        DetachedOutput output(file.handle());
        {
            const threads::NoneToHave none;
            output.write("lost");
            QVERIFY(output.finish());
        }
        output.write("written");
        QVERIFY(output.finish());
        QVERIFY(file.seek(0));
        QCOMPARE(file.readAll(), QByteArray("written"));
        QCOMPARE(logged(), QStringList()); // the log itself goes this way
    }
};

KOLM_TEST_MAIN(TestThreads)
#include "tst_threads.moc"
