#include "base/manual_clock.h"
#include "base/threads.h"
#include "pc/shared_cell.h"
#include "simpc/sim_pc.h"
#include "steamvr/vr_server_watcher.h"
#include "tests/support/test_case.h"
#include "tests/support/used_up_threads.h"

#include <QCoreApplication>
#include <QThread>

// The watcher where the system has no thread for it: it looks between other things.
class TestServerWatcher : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        tries_ = 0;
        owner_ = std::make_unique<QObject>();
        cell_.create();
        cell_.write(0);
        announce(notice);
    }
    void cleanup()
    {
        owner_.reset();
        cell_.destroy();
        TestCase::cleanup();
    }

    void theServerIsNoticedOnTheOwnersThread()
    {
        startWithoutThread();
        verifyThatItIsNoticed();
    }

    void soItIsWhereTheSystemItselfRefuses()
    {
        bool isUsedUp = false;
        {
            const UsedUpThreads none;
            isUsedUp = none.isSo();
            if (isUsedUp) {
                announce("QThread::start: Thread creation error (Resource temporarily "
                         "unavailable)");
                VrServerWatcher::start(owner_.get(), clock_, cell_, step());
            }
        }
        if (!isUsedUp) {
            startWithoutThread(); // what is announced has to come
            QSKIP("This system cannot be brought to refuse a thread.");
        }
        verifyThatItIsNoticed();
    }

    void theWatchEndsWithItsOwner()
    {
        startWithoutThread();
        owner_.reset();
        cell_.write(1);
        clock_.advance(10000);
        QCOMPARE(tries_, 0);
        QVERIFY(clock_.idle());
    }

private:
    VrServerWatcher::Step step()
    {
        return [this] {
            tried_ = QThread::currentThread();
            return ++tries_ == 2;
        };
    }
    void startWithoutThread()
    {
        const threads::NoneToHave none;
        VrServerWatcher::start(owner_.get(), clock_, cell_, step());
    }
    void verifyThatItIsNoticed()
    {
        clock_.advance(3600 * 1000); // no limit in time
        QCOMPARE(tries_, 0);
        cell_.write(1);
        clock_.advance(50);
        QCOMPARE(tries_, 1);
        QCOMPARE(tried_, thread());
        clock_.advance(500);
        QCOMPARE(tries_, 2);
        QVERIFY(clock_.idle());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(owner_->children().isEmpty());
    }

    const QString notice =
        "[steam] no thread to watch SteamVR's server on, watched between other things";
    ManualClock clock_;
    SimPc pc_{clock_};
    SharedCell cell_;
    std::unique_ptr<QObject> owner_;
    QThread *tried_ = nullptr;
    int tries_ = 0;
};

KOLM_TEST_MAIN(TestServerWatcher)
#include "tst_server_watcher.moc"
