#include "tests/pc/copies.h"
#include "tests/support/test_case.h"

#include <windows.h>

namespace {

constexpr wchar_t mutexName[] = L"KOLM_Streaming_Assistant";

} // namespace

// The lock of the first copy, a mutex in the user's session.
class SingleInstanceWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void theSecondCopyKnowsOfTheFirst()
    {
        QVERIFY(!lockExists());
        Copy first = startCopy();
        QCOMPARE(first.is, QByteArray("first"));
        QVERIFY(lockExists());
        Copy second = startCopy();
        QCOMPARE(second.is, QByteArray("second"));
        Copy third = startCopy();
        QCOMPARE(third.is, QByteArray("second"));
        end(&third);
        end(&second);
        end(&first);
        QVERIFY(!lockExists());
    }

    void aCopyStartedAfterTheFirstEndedIsAFirst()
    {
        Copy first = startCopy();
        QCOMPARE(first.is, QByteArray("first"));
        end(&first);
        Copy next = startCopy();
        QCOMPARE(next.is, QByteArray("first"));
        end(&next);
    }

    void aSecondCopyDoesNotHoldTheLock()
    {
        Copy first = startCopy();
        Copy second = startCopy();
        QCOMPARE(second.is, QByteArray("second"));
        end(&first);
        QVERIFY(!lockExists());
        Copy third = startCopy();
        QCOMPARE(third.is, QByteArray("first"));
        end(&second);
        end(&third);
    }

    void theLockDiesWithItsHolder()
    {
        Copy first = startCopy();
        QCOMPARE(first.is, QByteArray("first"));
        first.process->kill();
        QVERIFY(first.process->waitForFinished(timeout));
        QVERIFY(!lockExists());
        Copy next = startCopy();
        QCOMPARE(next.is, QByteArray("first"));
        end(&next);
    }

    void theFirstCopyDoesNotOwnTheMutex()
    {
        Copy first = startCopy();
        const HANDLE mutex = OpenMutexW(SYNCHRONIZE, FALSE, mutexName);
        QVERIFY(mutex);
        QCOMPARE(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
        ReleaseMutex(mutex);
        CloseHandle(mutex);
        end(&first);
    }

    void aLockThatCannotBeAskedForMakesAFirst()
    {
        // Something that is no mutex bears the name.
        const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, mutexName);
        QVERIFY(event);
        Copy first = startCopy();
        QCOMPARE(first.is, QByteArray("first"));
        Copy second = startCopy();
        QCOMPARE(second.is, QByteArray("first"));
        end(&second);
        end(&first);
        CloseHandle(event);
    }

private:
    static bool lockExists()
    {
        const HANDLE mutex = OpenMutexW(SYNCHRONIZE, FALSE, mutexName);
        if (mutex)
            CloseHandle(mutex);
        return mutex != nullptr;
    }
};

KOLM_TEST_MAIN(SingleInstanceWinTest)
#include "tst_single_instance_win.moc"
