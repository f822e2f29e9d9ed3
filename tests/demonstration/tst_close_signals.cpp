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

    void afterwardsTheSignalsEndTheProcessAgain()
    {
        const auto handler = [](int number) {
            struct sigaction action = {};
            sigaction(number, nullptr, &action);
            return action.sa_handler;
        };
        {
            const CloseSignals closeSignals;
            QVERIFY(handler(SIGINT) != SIG_DFL);
            QVERIFY(handler(SIGTERM) != SIG_DFL);
        }
        QVERIFY(handler(SIGINT) == SIG_DFL);
        QVERIFY(handler(SIGTERM) == SIG_DFL);
    }
};

KOLM_TEST_MAIN(TestCloseSignals)
#include "tst_close_signals.moc"
