#include "tests/support/test_case.h"

#include <QProcess>

#include <memory>

#include <windows.h>

namespace {

constexpr int timeout = 20000; // ms
constexpr wchar_t mutexName[] = L"KOLM_Streaming_Assistant";

} // namespace

// The lock of the first copy, a mutex in the user's session.
class SingleInstanceWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void theSecondCopyKnowsOfTheFirst();
    void aCopyStartedAfterTheFirstEndedIsAFirst();
    void aSecondCopyDoesNotHoldTheLock();
    void theLockDiesWithItsHolder();
    void theFirstCopyDoesNotOwnTheMutex();
    void aLockThatCannotBeAskedForMakesAFirst();

private:
    // A copy of the program and what it says it is.
    struct Copy
    {
        std::unique_ptr<QProcess> process;
        QByteArray is;
    };
    static Copy start();
    static void end(Copy *copy);
    static bool lockExists();
};

SingleInstanceWinTest::Copy SingleInstanceWinTest::start()
{
    Copy copy{std::make_unique<QProcess>(), QByteArray()};
    copy.process->start(QStringLiteral(KOLM_TEST_LOCK_HOLDER), QStringList());
    while (!copy.process->canReadLine() && copy.process->waitForReadyRead(timeout)) {
    }
    copy.is = copy.process->readLine().trimmed();
    return copy;
}

void SingleInstanceWinTest::end(Copy *copy)
{
    copy->process->closeWriteChannel();
    QVERIFY(copy->process->waitForFinished(timeout));
    QCOMPARE(copy->process->exitStatus(), QProcess::NormalExit);
}

bool SingleInstanceWinTest::lockExists()
{
    const HANDLE mutex = OpenMutexW(SYNCHRONIZE, FALSE, mutexName);
    if (mutex)
        CloseHandle(mutex);
    return mutex != nullptr;
}

void SingleInstanceWinTest::theSecondCopyKnowsOfTheFirst()
{
    QVERIFY(!lockExists());
    Copy first = start();
    QCOMPARE(first.is, QByteArray("first"));
    QVERIFY(lockExists());
    Copy second = start();
    QCOMPARE(second.is, QByteArray("second"));
    Copy third = start();
    QCOMPARE(third.is, QByteArray("second"));
    end(&third);
    end(&second);
    end(&first);
    QVERIFY(!lockExists());
}

void SingleInstanceWinTest::aCopyStartedAfterTheFirstEndedIsAFirst()
{
    Copy first = start();
    QCOMPARE(first.is, QByteArray("first"));
    end(&first);
    Copy next = start();
    QCOMPARE(next.is, QByteArray("first"));
    end(&next);
}

void SingleInstanceWinTest::aSecondCopyDoesNotHoldTheLock()
{
    Copy first = start();
    Copy second = start();
    QCOMPARE(second.is, QByteArray("second"));
    end(&first);
    QVERIFY(!lockExists());
    Copy third = start();
    QCOMPARE(third.is, QByteArray("first"));
    end(&second);
    end(&third);
}

void SingleInstanceWinTest::theLockDiesWithItsHolder()
{
    Copy first = start();
    QCOMPARE(first.is, QByteArray("first"));
    first.process->kill();
    QVERIFY(first.process->waitForFinished(timeout));
    QVERIFY(!lockExists());
    Copy next = start();
    QCOMPARE(next.is, QByteArray("first"));
    end(&next);
}

void SingleInstanceWinTest::theFirstCopyDoesNotOwnTheMutex()
{
    Copy first = start();
    const HANDLE mutex = OpenMutexW(SYNCHRONIZE, FALSE, mutexName);
    QVERIFY(mutex);
    QCOMPARE(WaitForSingleObject(mutex, 0), WAIT_OBJECT_0);
    ReleaseMutex(mutex);
    CloseHandle(mutex);
    end(&first);
}

void SingleInstanceWinTest::aLockThatCannotBeAskedForMakesAFirst()
{
    // Something that is no mutex bears the name.
    const HANDLE event = CreateEventW(nullptr, TRUE, FALSE, mutexName);
    QVERIFY(event);
    Copy first = start();
    QCOMPARE(first.is, QByteArray("first"));
    Copy second = start();
    QCOMPARE(second.is, QByteArray("first"));
    end(&second);
    end(&first);
    CloseHandle(event);
}

KOLM_TEST_MAIN(SingleInstanceWinTest)
#include "tst_single_instance_win.moc"
