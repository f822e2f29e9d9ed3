#include "tests/support/test_case.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>

#include <memory>

namespace {

constexpr int timeout = 20000;

} // namespace

class SingleInstanceTest : public TestCase
{
    Q_OBJECT

private slots:
    void init();

    void theSecondCopyKnowsOfTheFirst();
    void aCopyStartedAfterTheFirstEndedIsAFirst();
    void aSecondCopyDoesNotHoldTheLock();
    void theLockDiesWithItsHolder();
    void aChildProcessDoesNotInheritTheLock();
    void anotherSessionHasItsOwn();
    void withoutASessionFolderTheTemporaryFolderServes_data();
    void withoutASessionFolderTheTemporaryFolderServes();
    void aLockThatCannotBeAskedForMakesAFirst();

private:
    // A copy of the program and what it says it is.
    struct Copy
    {
        std::unique_ptr<QProcess> process;
        QByteArray is;
    };
    Copy start(const QStringList &arguments = {}) const;
    static void end(Copy *copy);

    QProcessEnvironment environment_;
};

void SingleInstanceTest::init()
{
    TestCase::init();
    QVERIFY(QDir(dir()).mkdir(QStringLiteral("session")));
    QVERIFY(QDir(dir()).mkdir(QStringLiteral("temporary")));
    environment_ = QProcessEnvironment::systemEnvironment();
    environment_.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("session")));
    environment_.insert(QStringLiteral("TMPDIR"), path(QStringLiteral("temporary")));
}

SingleInstanceTest::Copy SingleInstanceTest::start(const QStringList &arguments) const
{
    Copy copy{std::make_unique<QProcess>(), QByteArray()};
    copy.process->setProcessEnvironment(environment_);
    copy.process->start(QStringLiteral(KOLM_TEST_LOCK_HOLDER), arguments);
    while (!copy.process->canReadLine() && copy.process->waitForReadyRead(timeout)) {
    }
    copy.is = copy.process->readLine().trimmed();
    return copy;
}

void SingleInstanceTest::end(Copy *copy)
{
    copy->process->closeWriteChannel();
    QVERIFY(copy->process->waitForFinished(timeout));
    QCOMPARE(copy->process->exitStatus(), QProcess::NormalExit);
}

void SingleInstanceTest::theSecondCopyKnowsOfTheFirst()
{
    Copy first = start();
    QCOMPARE(first.is, QByteArray("first"));
    Copy second = start();
    QCOMPARE(second.is, QByteArray("second"));
    Copy third = start();
    QCOMPARE(third.is, QByteArray("second"));
    QVERIFY(QFileInfo::exists(QStringLiteral("session/KOLM_Streaming_Assistant.lock")));
    end(&third);
    end(&second);
    end(&first);
}

void SingleInstanceTest::aCopyStartedAfterTheFirstEndedIsAFirst()
{
    Copy first = start();
    QCOMPARE(first.is, QByteArray("first"));
    end(&first);
    Copy next = start();
    QCOMPARE(next.is, QByteArray("first"));
    end(&next);
}

void SingleInstanceTest::aSecondCopyDoesNotHoldTheLock()
{
    Copy first = start();
    Copy second = start();
    QCOMPARE(second.is, QByteArray("second"));
    const QDir open(QStringLiteral("/proc/%1/fd").arg(second.process->processId()));
    QVERIFY(open.exists());
    for (const QFileInfo &file : open.entryInfoList(QDir::Files | QDir::System))
        QVERIFY(!file.symLinkTarget().endsWith(QLatin1String(".lock")));
    end(&first);
    Copy third = start();
    QCOMPARE(third.is, QByteArray("first"));
    end(&second);
    end(&third);
}

void SingleInstanceTest::theLockDiesWithItsHolder()
{
    Copy first = start();
    QCOMPARE(first.is, QByteArray("first"));
    first.process->kill();
    QVERIFY(first.process->waitForFinished(timeout));
    QCOMPARE(first.process->exitStatus(), QProcess::CrashExit);
    Copy next = start();
    QCOMPARE(next.is, QByteArray("first"));
    end(&next);
}

void SingleInstanceTest::aChildProcessDoesNotInheritTheLock()
{
    Copy first = start({QStringLiteral("sleep")});
    QCOMPARE(first.is, QByteArray("first"));
    first.process->kill();
    QVERIFY(first.process->waitForFinished(timeout));
    Copy next = start();
    QCOMPARE(next.is, QByteArray("first"));
    end(&next);
}

void SingleInstanceTest::anotherSessionHasItsOwn()
{
    Copy here = start();
    QCOMPARE(here.is, QByteArray("first"));
    QVERIFY(QDir(dir()).mkdir(QStringLiteral("other")));
    environment_.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("other")));
    Copy there = start();
    QCOMPARE(there.is, QByteArray("first"));
    end(&here);
    end(&there);
}

void SingleInstanceTest::withoutASessionFolderTheTemporaryFolderServes_data()
{
    QTest::addColumn<bool>("named");
    QTest::newRow("none named") << false;
    QTest::newRow("one that does not exist") << true;
}

void SingleInstanceTest::withoutASessionFolderTheTemporaryFolderServes()
{
    QFETCH(bool, named);
    if (named)
        environment_.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("missing")));
    else
        environment_.remove(QStringLiteral("XDG_RUNTIME_DIR"));
    Copy first = start();
    QCOMPARE(first.is, QByteArray("first"));
    Copy second = start();
    QCOMPARE(second.is, QByteArray("second"));
    QCOMPARE(QDir(path(QStringLiteral("temporary"))).entryList(QDir::Files).size(), 1);
    end(&first);
    end(&second);
}

void SingleInstanceTest::aLockThatCannotBeAskedForMakesAFirst()
{
    environment_.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("missing")));
    environment_.insert(QStringLiteral("TMPDIR"), path(QStringLiteral("missing")));
    Copy first = start();
    QCOMPARE(first.is, QByteArray("first"));
    Copy second = start();
    QCOMPARE(second.is, QByteArray("first"));
    end(&first);
    end(&second);
}

KOLM_TEST_MAIN(SingleInstanceTest)
#include "tst_single_instance.moc"
