#include "tests/pc/copies.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFileInfo>

// The lock of the first copy, a file in the folder of the session.
class SingleInstanceTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        QVERIFY(QDir(dir()).mkdir(QStringLiteral("session")));
        QVERIFY(QDir(dir()).mkdir(QStringLiteral("temporary")));
        environment_ = QProcessEnvironment::systemEnvironment();
        environment_.insert(QStringLiteral("XDG_RUNTIME_DIR"), path(QStringLiteral("session")));
        environment_.insert(QStringLiteral("TMPDIR"), path(QStringLiteral("temporary")));
    }

    void theSecondCopyKnowsOfTheFirst()
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

    void aCopyStartedAfterTheFirstEndedIsAFirst()
    {
        Copy first = start();
        QCOMPARE(first.is, QByteArray("first"));
        end(&first);
        Copy next = start();
        QCOMPARE(next.is, QByteArray("first"));
        end(&next);
    }

    void aSecondCopyDoesNotHoldTheLock()
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

    void theLockDiesWithItsHolder()
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

    void aChildProcessDoesNotInheritTheLock()
    {
        Copy first = start({QStringLiteral("sleep")});
        QCOMPARE(first.is, QByteArray("first"));
        first.process->kill();
        QVERIFY(first.process->waitForFinished(timeout));
        Copy next = start();
        QCOMPARE(next.is, QByteArray("first"));
        end(&next);
    }

    void anotherSessionHasItsOwn()
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

    void withoutASessionFolderTheTemporaryFolderServes_data()
    {
        QTest::addColumn<bool>("named");
        QTest::newRow("none named") << false;
        QTest::newRow("one that does not exist") << true;
    }

    void withoutASessionFolderTheTemporaryFolderServes()
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

    void aLockThatCannotBeAskedForMakesAFirst()
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

private:
    Copy start(const QStringList &arguments = {}) const
    {
        return startCopy(arguments, environment_);
    }

    QProcessEnvironment environment_;
};

KOLM_TEST_MAIN(SingleInstanceTest)
#include "tst_single_instance.moc"
