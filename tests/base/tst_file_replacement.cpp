#include "base/file_replacement.h"
#include "base/manual_clock.h"
#include "tests/base/denied_access.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

using Uncopied = FileReplacement::Uncopied;

// As the system renames, where nobody keeps the file open.
bool renameOver(const QString &from, const QString &to)
{
    return (!QFile::exists(to) || QFile::remove(to)) && QFile::rename(from, to);
}

} // namespace

Q_DECLARE_METATYPE(Uncopied)

// What happens where the system refuses to put one file in another one's place.
class FileReplacementTest : public TestCase
{
    Q_OBJECT

private slots:
    void aRefusedRenameIsTriedAgainForAMoment()
    {
        writeFile("file", "old");
        FileReplacement replacement = refusing(3);
        const qint64 before = clock_.slept();
        QCOMPARE(replacement.replace(path("file"), "new", Uncopied::Fail), WriteResult::Ok);
        QCOMPARE(readFile("file"), QByteArray("new"));
        QCOMPARE(files(), QStringList{"file"});
        QCOMPARE(clock_.slept() - before, 75);
        // Whole at every moment.
        for (const QByteArray &copy : qAsConst(onDiskAtRename_))
            QCOMPARE(copy, QByteArray("new"));
    }

    void whatStaysRefusedIsWrittenInPlaceBesideItsCopy_data()
    {
        QTest::addColumn<Uncopied>("uncopied");
        QTest::newRow("ours") << Uncopied::Fail;
        QTest::newRow("foreign") << Uncopied::Overwrite;
    }

    void whatStaysRefusedIsWrittenInPlaceBesideItsCopy()
    {
        QFETCH(Uncopied, uncopied);
        writeFile("file", "a long old content");
        FileReplacement replacement = refusing(-1);
        const qint64 before = clock_.slept();
        QCOMPARE(replacement.replace(path("file"), "new", uncopied), WriteResult::Ok);
        QCOMPARE(readFile("file"), QByteArray("new"));
        QCOMPARE(files(), QStringList{"file"});
        QCOMPARE(clock_.slept() - before, FileReplacement::patience.count());
    }

    void whoeverIsKilledInBetweenFinishesAtTheNextStart_data()
    {
        QTest::addColumn<QByteArray>("left");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("before the first byte") << QByteArray("") << QByteArray("the new content");
        QTest::newRow("in the middle") << QByteArray("the new") << QByteArray("the new content");
        QTest::newRow("a power cut")
            << QByteArray("the\0\0\0\0\0", 8) << QByteArray("the new content");
        QTest::newRow("after the last byte")
            << QByteArray("the new content") << QByteArray("the new content");
        QTest::newRow("before anything was written")
            << QByteArray("an old content") << QByteArray("an old content");
        QTest::newRow("somebody else wrote it since")
            << QByteArray("the new content of others") << QByteArray("the new content of others");
    }

    void whoeverIsKilledInBetweenFinishesAtTheNextStart()
    {
        QFETCH(QByteArray, left);
        writeFile("file", left);
        writeFile("file.new", "the new content");
        FileReplacement replacement = refusing(0);
        replacement.finish(path("file"));
        QTEST(readFile("file"), "after");
        QCOMPARE(files(), QStringList{"file"});
    }

    void aFinishThatIsRefusedIsWrittenInPlace()
    {
        writeFile("file", "the");
        writeFile("file.new", "the new content");
        FileReplacement replacement = refusing(-1);
        replacement.finish(path("file"));
        QCOMPARE(readFile("file"), QByteArray("the new content"));
        QCOMPARE(files(), QStringList{"file"});
    }

    void aFinishWaitsForAFileThatIsHeld()
    {
        writeFile("file", "the");
        writeFile("file.new", "the new content");
        FileReplacement replacement = refusing(0);
        {
            const LockedFile obstacle(path("file"));
            QVERIFY(obstacle.works());
            replacement.finish(path("file"));
        }
        QCOMPARE(files(), (QStringList{"file", "file.new"}));
        replacement.finish(path("file"));
        QCOMPARE(readFile("file"), QByteArray("the new content"));
    }

    void finishingWithoutACopyDoesNothing()
    {
        FileReplacement replacement = refusing(0);
        replacement.finish(path("missing"));
        writeFile("file", "whole");
        replacement.finish(path("file"));
        QCOMPARE(readFile("file"), QByteArray("whole"));
        // What was to become a first one and never did.
        writeFile("first.new", "never");
        replacement.finish(path("first"));
        QCOMPARE(files(), QStringList{"file"});
    }

    void interruptedIs_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("interrupted");
        QTest::newRow("nothing") << QByteArray("") << true;
        QTest::newRow("the beginning") << QByteArray("{\"a\":") << true;
        QTest::newRow("the beginning and what a power cut leaves")
            << QByteArray("{\"a\"\0\0\0", 7) << true;
        QTest::newRow("only what a power cut leaves") << QByteArray(7, '\0') << true;
        QTest::newRow("all of it") << QByteArray("{\"a\":1}") << false;
        QTest::newRow("all of it and more") << QByteArray("{\"a\":1}\n") << false;
        QTest::newRow("something else") << QByteArray("{\"b\"") << false;
        QTest::newRow("a NUL in the middle") << QByteArray("{\0\"a", 4) << false;
        QTest::newRow("more NULs than it is long") << QByteArray(8, '\0') << false;
    }

    void interruptedIs()
    {
        QFETCH(QByteArray, content);
        QTEST(isInterruptedCopy(content, "{\"a\":1}"), "interrupted");
    }

    void aFileThatItsOwnerMadeReadOnlyStaysAsItIs_data()
    {
        whatStaysRefusedIsWrittenInPlaceBesideItsCopy_data();
    }

    // Also for an administrator, whom nothing would keep from it.
    void aFileThatItsOwnerMadeReadOnlyStaysAsItIs()
    {
        QFETCH(Uncopied, uncopied);
        writeFile("file", "old");
        const auto before = QFile::permissions(path("file"));
        QVERIFY(
            QFile::setPermissions(path("file"), QFileDevice::ReadOwner | QFileDevice::ReadUser));
        QCOMPARE(FileReplacement::system().replace(path("file"), "new", uncopied),
                 WriteResult::OpenFailed);
        QCOMPARE(readFile("file"), QByteArray("old"));
        QCOMPARE(files(), QStringList{"file"});
        QVERIFY(QFile::setPermissions(path("file"), before));
    }

    void aFileThatIsHeldForAMomentIsReadAndWritten()
    {
        writeFile("file", "old");
        std::unique_ptr<LockedFile> obstacle;
        // Lets go after the third try.
        class ReleasingClock : public Clock
        {
        public:
            ReleasingClock(ManualClock &time, std::unique_ptr<LockedFile> &held)
                : time_(time), held_(held)
            {
            }
            QDateTime now() const override { return time_.now(); }
            qint64 elapsed() const override { return time_.elapsed(); }
            void sleep(std::chrono::milliseconds duration) override
            {
                time_.sleep(duration);
                if (++sleeps_ % 3 == 0)
                    held_.reset();
            }
            void singleShot(std::chrono::milliseconds, QObject *, std::function<void()>) override {}
            int startTimer(std::chrono::milliseconds, QObject *, Qt::TimerType) override
            {
                return 1;
            }
            void killTimer(int, QObject *) override {}

        private:
            ManualClock &time_;
            std::unique_ptr<LockedFile> &held_;
            int sleeps_ = 0;
        } clock(clock_, obstacle);
        // The undefined-behaviour sanitizer opens a pipe when it meets a class first.
        QCOMPARE(static_cast<const Clock &>(clock).elapsed(), clock_.elapsed());
        FileReplacement replacement({clock, renameOver});
        obstacle = std::make_unique<LockedFile>(path("file"));
        QVERIFY(obstacle->works());
        QVERIFY(replacement.read(path("file")) == QByteArray("old"));
        obstacle = std::make_unique<LockedFile>(path("file"));
        QCOMPARE(replacement.replace(path("file"), "new", Uncopied::Fail), WriteResult::Ok);
        QCOMPARE(readFile("file"), QByteArray("new"));
    }

    void aMissingFileIsNotWaitedFor()
    {
        FileReplacement replacement = refusing(0);
        const qint64 before = clock_.slept();
        QVERIFY(!replacement.read(path("missing")));
        QCOMPARE(replacement.replace(path("missing"), "new", Uncopied::Fail), WriteResult::Ok);
        QCOMPARE(clock_.slept(), before);
    }

    // Real Windows and Wine refuse the rename here.
    void aFileThatAReaderKeepsOpenIsReplacedAllTheSame()
    {
        writeFile("file", "a long old content");
        QFile reader(path("file"));
        QVERIFY(reader.open(QIODevice::ReadOnly));
        QCOMPARE(replaceFile(path("file"), "new"), WriteResult::Ok);
        QCOMPARE(readFile("file"), QByteArray("new"));
        QCOMPARE(files(), QStringList{"file"});
    }

private:
    // Refuses so many renames onto the file; -1: all.
    FileReplacement refusing(int times)
    {
        refusals_ = times;
        return FileReplacement({clock_, [this](const QString &from, const QString &to) {
                                    onDiskAtRename_ << readFile("file.new");
                                    if (refusals_ != 0) {
                                        --refusals_;
                                        return false;
                                    }
                                    return renameOver(from, to);
                                }});
    }
    QStringList files() const
    {
        return QDir(dir()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    ManualClock clock_;
    int refusals_ = 0;
    QList<QByteArray> onDiskAtRename_;
};

KOLM_TEST_MAIN(FileReplacementTest)
#include "tst_file_replacement.moc"
