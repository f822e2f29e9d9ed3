#include "app/session_guard.h"
#include "pc/session_end.h"
#include "simpc/session_end_sim.h"
#include "tests/support/test_case.h"

#include <QAbstractEventDispatcher>

using session_end::Message;

// What is done and answered when the system asks whether the session may end, and
// when it ends.
class TestSessionGuard : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        done_.clear();
        guard_ = std::make_unique<SessionGuard>([this] { done_ << "store"; },
                                                [this] { done_ << "end"; });
    }
    void cleanup()
    {
        guard_.reset();
        TestCase::cleanup();
    }

    void theQuestionChangesNothing()
    {
        for (int window = 0; window < 3; ++window)
            QCOMPARE(tell(Message::Question), session_end::yes);
        QCoreApplication::processEvents();
        QCOMPARE(done_, QStringList());
    }

    void aRefusedEndChangesNothing()
    {
        tell(Message::Question);
        QCOMPARE(tell(Message::IsRefused), 0L);
        QCoreApplication::processEvents();
        QCOMPARE(done_, QStringList());
    }

    void theEndStoresBeforeTheAnswerAndEndsAfterIt()
    {
        tell(Message::Question);
        QCOMPARE(tell(Message::Ends), 0L);
        QCOMPARE(done_, QStringList("store"));
        QCoreApplication::processEvents();
        QCOMPARE(done_, QStringList({"store", "end"}));
        QCOMPARE(loggedCount("the session ends"), 1);
    }

    void whatEveryWindowIsToldIsDoneOnce()
    {
        for (int window = 0; window < 3; ++window)
            tell(Message::Ends);
        QCoreApplication::processEvents();
        QCOMPARE(done_, QStringList({"store", "end"}));
    }

    void theEndAfterARefusedOneCounts()
    {
        tell(Message::IsRefused);
        tell(Message::Ends);
        QCOMPARE(done_, QStringList("store"));
    }

    void otherMessagesAreLeftToOthers()
    {
        Message message = Message::Other;
        long result = 7;
        QVERIFY(!pass(session_end::sim::messageType, &message, &result));
        message = Message::Ends;
        QVERIFY(!pass("another system's", &message, &result));
        QCOMPARE(result, 7L);
        QCOMPARE(done_, QStringList());
    }

private:
    // As the system's messages come to the application; whether anybody took it.
    static bool pass(const char *type, Message *message, long *result)
    {
        return QAbstractEventDispatcher::instance()->filterNativeEvent(type, message, result);
    }
    // The answer, or -1 when nobody gives one.
    static long tell(Message message)
    {
        long result = -1;
        return pass(session_end::sim::messageType, &message, &result) ? result : -1;
    }

    std::unique_ptr<SessionGuard> guard_;
    QStringList done_;
};

KOLM_TEST_MAIN(TestSessionGuard)
#include "tst_session_guard.moc"
