#include "demonstration/close_signals.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

#include <csignal>

class TestCloseSignals : public TestCase
{
    Q_OBJECT

private slots:
    void eachSignalAsksForTheEnd_data()
    {
        QTest::addColumn<int>("number");
        QTest::newRow("Ctrl+C") << SIGINT;
        QTest::newRow("kill") << SIGTERM;
    }

    void eachSignalAsksForTheEnd()
    {
        QFETCH(int, number);
        const CloseSignals closeSignals;
        QSignalSpy asked(&closeSignals, &CloseSignals::closeRequested);
        QCOMPARE(raise(number), 0);
        QTRY_COMPARE(asked.count(), 1);
    }

    void theGuiThreadIsAskedWhenItHasTime()
    {
        const CloseSignals closeSignals;
        QSignalSpy asked(&closeSignals, &CloseSignals::closeRequested);
        // Several in a moment in which it is busy are one wish.
        raise(SIGTERM);
        raise(SIGINT);
        QCOMPARE(asked.count(), 0);
        QTRY_COMPARE(asked.count(), 1);
        QCoreApplication::processEvents();
        QCOMPARE(asked.count(), 1);
    }

    void anotherOneMayFollowTheFirst()
    {
        {
            const CloseSignals first;
        }
        const CloseSignals second;
        QSignalSpy asked(&second, &CloseSignals::closeRequested);
        raise(SIGTERM);
        QTRY_COMPARE(asked.count(), 1);
        raise(SIGTERM);
        QTRY_COMPARE(asked.count(), 2);
    }

    void oneThatCameBeforeIsKept()
    {
        CloseSignals::heed();
        raise(SIGTERM);
        const CloseSignals closeSignals;
        QSignalSpy asked(&closeSignals, &CloseSignals::closeRequested);
        QTRY_COMPARE(asked.count(), 1);
    }

    // The program still stops SteamVR and writes its files then.
    void afterwardsTheSignalsStillEndNobody()
    {
        {
            const CloseSignals closeSignals;
        }
        raise(SIGINT);
        raise(SIGTERM);
        struct sigaction action = {};
        for (const int number : {SIGINT, SIGTERM}) {
            sigaction(number, nullptr, &action);
            QVERIFY(action.sa_handler != SIG_DFL);
        }
    }
};

KOLM_TEST_MAIN(TestCloseSignals)
#include "tst_close_signals.moc"
