#include "base/file_io.h"
#include "tests/base/denied_access.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

using Replace = WriteResult (*)(const QString &, const QByteArray &);

// A name that leaves no room for the letters that a temporary copy adds.
const QString kLongName(252, QLatin1Char('n'));

} // namespace

Q_DECLARE_METATYPE(Replace)

class TestFileIo : public TestCase
{
    Q_OBJECT

private slots:
    void theWholeContentIsRead_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("text") << QByteArray("{\"a\": 1}\n");
        QTest::newRow("line ends and null bytes") << QByteArray("a\r\n\0b\n\r\0", 8);
        QTest::newRow("50 MB") << QByteArray(50000000, 'x');
    }

    void theWholeContentIsRead()
    {
        QFETCH(QByteArray, content);
        writeFile("file", content);

        QVERIFY(readContent(path("file")) == content);
        QVERIFY(readForEdit(path("file")) == content);
        QVERIFY(readFile("file") == content);
    }

    void aMissingFileOrAFolderIsNoContent()
    {
        QVERIFY(QDir().mkdir(path("folder")));

        QVERIFY(!readContent(path("missing")));
        QVERIFY(!readContent(path("missing/file")));
        QVERIFY(!readContent(path("folder")));
        QVERIFY(!readForEdit(path("folder")));
    }

    void readingForAnEditCreatesNothing()
    {
        QVERIFY(!readForEdit(path("missing")));

        QVERIFY(!QFile::exists(path("missing")));
    }

    void aReadOnlyFileIsReadButNotForAnEdit()
    {
        writeFile("file", "old");
        const ReadOnlyFile obstacle(path("file"));
        if (!obstacle.works())
            QSKIP("This user may write every file.");

        QVERIFY(readContent(path("file")) == QByteArray("old"));
        QVERIFY(!readForEdit(path("file")));
    }

    void aLockedFileIsNoContent()
    {
        writeFile("file", "old");
        const LockedFile obstacle(path("file"));
        QVERIFY(obstacle.works());

        QVERIFY(!readContent(path("file")));
        QVERIFY(!readForEdit(path("file")));
    }

    void aFileIsReplaced_data()
    {
        QTest::addColumn<Replace>("replace");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        const auto add = [](const QByteArray &name, const QByteArray &before,
                            const QByteArray &after) {
            QTest::newRow(QByteArray("ours, " + name)) << &replaceFile << before << after;
            QTest::newRow(QByteArray("foreign, " + name)) << &replaceForeignFile << before << after;
        };
        add("new", QByteArray(), "new");
        add("shorter", "a long old content", "new");
        add("longer", "old", "a long new content\r\n");
        add("empty", "old", "");
        add("large", "old", QByteArray(5000000, 'x'));
    }

    void aFileIsReplaced()
    {
        QFETCH(Replace, replace);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        if (!before.isNull())
            writeFile("file", before);

        QCOMPARE(replace(path("file"), after), WriteResult::Ok);

        QVERIFY(QFile::exists(path("file")));
        QVERIFY(readFile("file") == after);
    }

    void theFolderHoldsNothingElseAfterwards()
    {
        QCOMPARE(replaceFile(path("a"), "1"), WriteResult::Ok);
        QCOMPARE(replaceForeignFile(path("b"), "2"), WriteResult::Ok);
        QCOMPARE(replaceFile(path("b"), "3"), WriteResult::Ok);

        QCOMPARE(QDir(dir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden),
                 QStringList({"a", "b"}));
    }

    void permissionsAreKept()
    {
        writeFile("file", "old");
        const auto permissions = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
        QVERIFY(QFile::setPermissions(path("file"), permissions));
        const auto before = QFile::permissions(path("file"));

        QCOMPARE(replaceForeignFile(path("file"), "new"), WriteResult::Ok);
        QCOMPARE(QFile::permissions(path("file")), before);
        QCOMPARE(replaceFile(path("file"), "newer"), WriteResult::Ok);
        QCOMPARE(QFile::permissions(path("file")), before);
    }

    void aLinkStaysALink()
    {
        QVERIFY(QDir().mkdir(path("elsewhere")));
        writeFile("elsewhere/file", "old");
        // Windows would make a shortcut of it, which is a file like any other.
        if (!QFile::link(path("elsewhere/file"), path("file.lnk")) || readFile("file.lnk") != "old")
            QSKIP("No symbolic links here.");

        QCOMPARE(replaceForeignFile(path("file.lnk"), "new"), WriteResult::Ok);

        QVERIFY(QFileInfo(path("file.lnk")).isSymLink());
        QCOMPARE(readFile("elsewhere/file"), QByteArray("new"));
    }

    void whatCannotBeOpenedIsOpenFailed_data()
    {
        QTest::addColumn<Replace>("replace");
        QTest::addColumn<QString>("name");
        QTest::newRow("ours, no folder") << &replaceFile << QString("missing/file");
        QTest::newRow("foreign, no folder") << &replaceForeignFile << QString("missing/file");
        QTest::newRow("ours, a folder in its place") << &replaceFile << QString("folder");
        QTest::newRow("foreign, a folder in its place") << &replaceForeignFile << QString("folder");
        QTest::newRow("ours, a file in the folder's place") << &replaceFile << QString("old/file");
        QTest::newRow("foreign, a file in the folder's place")
            << &replaceForeignFile << QString("old/file");
    }

    void whatCannotBeOpenedIsOpenFailed()
    {
        QFETCH(Replace, replace);
        QFETCH(QString, name);
        QVERIFY(QDir().mkdir(path("folder")));
        writeFile("folder/inside", "kept");
        writeFile("old", "kept");

        QCOMPARE(replace(path(name), "new"), WriteResult::OpenFailed);

        QCOMPARE(QDir(dir()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList({"folder", "old"}));
        QCOMPARE(readFile("folder/inside"), QByteArray("kept"));
        QCOMPARE(readFile("old"), QByteArray("kept"));
    }

    void aReadOnlyFileIsOpenFailedAndStays()
    {
        writeFile("file", "old");
        const ReadOnlyFile obstacle(path("file"));
        if (!obstacle.works())
            QSKIP("This user may write every file.");

        QCOMPARE(replaceFile(path("file"), "new"), WriteResult::OpenFailed);
        QCOMPARE(replaceForeignFile(path("file"), "new"), WriteResult::OpenFailed);
        QCOMPARE(readFile("file"), QByteArray("old"));
    }

    void aLockedFileStays()
    {
        writeFile("file", "old");
        {
            const LockedFile obstacle(path("file"));
            QVERIFY(obstacle.works());
            QVERIFY(replaceFile(path("file"), "new") != WriteResult::Ok);
            QCOMPARE(replaceForeignFile(path("file"), "new"), WriteResult::OpenFailed);
        }
        QCOMPARE(readFile("file"), QByteArray("old"));
    }

    void ourFileIsLeftAloneWhereItCannotBeReplacedAsOneStep()
    {
        writeFile(kLongName, "old");

        QVERIFY(replaceFile(path(kLongName), "new") != WriteResult::Ok);

        QCOMPARE(readFile(kLongName), QByteArray("old"));
    }

    void aForeignFileIsWrittenInPlaceWhereItCannotBeReplacedAsOneStep()
    {
        writeFile(kLongName, "a long old content");

        QCOMPARE(replaceForeignFile(path(kLongName), "new"), WriteResult::Ok);

        QCOMPARE(readFile(kLongName), QByteArray("new"));
    }

    void aForeignFileThatAReaderKeepsOpenIsWrittenAllTheSame()
    {
        writeFile("file", "a long old content");
        QFile reader(path("file"));
        QVERIFY(reader.open(QIODevice::ReadOnly));

        // Windows does not put another file in the place of an open one.
        QCOMPARE(replaceForeignFile(path("file"), "new"), WriteResult::Ok);

        QCOMPARE(readFile("file"), QByteArray("new"));
    }

    void aForeignFileIsWrittenInPlaceInAFolderThatTakesNoNewFiles()
    {
        QVERIFY(QDir().mkdir(path("folder")));
        writeFile("folder/file", "a long old content");
        const ClosedFolder obstacle(path("folder"));
        if (!obstacle.works())
            QSKIP("This user may create files everywhere.");

        QCOMPARE(replaceFile(path("folder/file"), "new"), WriteResult::OpenFailed);
        QCOMPARE(readFile("folder/file"), QByteArray("a long old content"));
        QCOMPARE(replaceForeignFile(path("folder/file"), "new"), WriteResult::Ok);
        QCOMPARE(readFile("folder/file"), QByteArray("new"));
    }
};

KOLM_TEST_MAIN(TestFileIo)
#include "tst_file_io.moc"
