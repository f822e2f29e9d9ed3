#include "peers/cloud_sim/pattern.h"
#include "tests/base/denied_access.h"
#include "tests/cloud/update_fixture.h"
#include "tests/support/small_disk.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

// Where table and installer cannot be written.
class TestUpdateFiles : public UpdateFixture
{
    Q_OBJECT

private slots:
    void aTableThatCannotBeSavedIsLogged()
    {
        QVERIFY(QDir(dir()).mkdir("compare.json"));
        check({{"table", shortTable}});
        QCOMPARE(logged(), QStringList("down compare.json fail"));
        QVERIFY(QFileInfo("compare.json").isDir());
    }

    // An ordinary user's program in a folder that only an administrator may change.
    void aTableInAFolderThatTakesNoNewFileIsWrittenOver()
    {
        QVERIFY(QDir(dir()).mkdir("installed"));
        writeFile("installed/compare.json", "{\"an old and longer table\": []}");
        QVERIFY(QDir::setCurrent(path("installed")));
        const ClosedFolder closed(path("installed"));
        if (!closed.works())
            QSKIP("This user may create files everywhere.");
        check({{"table", shortTable}});
        QCOMPARE(readFile("installed/compare.json"), QByteArray("{\"cpu\":{}}"));
        QCOMPARE(logged(), QStringList());
        QVERIFY(QDir::setCurrent(dir()));
    }

    void aFolderWhereTheInstallerBelongsIsNone()
    {
        QVERIFY(QDir().mkpath(installer()));
        check(newer());
        QVERIFY(offers_.isEmpty());
        QCOMPARE(finished_, 1);
        QVERIFY(!update_->setup());
    }

    void theStandardErrorStreamSaysWhatCannotBeOpened_data()
    {
        QTest::addColumn<QString>("test");
        QTest::addColumn<QString>("file");
        QTest::newRow("table") << "aTableThatCannotBeSavedIsLogged"
                               << "compare.json";
        QTest::newRow("installer") << "aFolderWhereTheInstallerBelongsIsNone"
                                   << "data/download/Setup.exe";
    }

    void theStandardErrorStreamSaysWhatCannotBeOpened()
    {
        QFETCH(QString, test);
        QFETCH(QString, file);
        QProcess process;
        process.start(QCoreApplication::applicationFilePath(), {test});
        QVERIFY(process.waitForFinished(60000));
        QCOMPARE(process.exitCode(), 0);
        const QString errors = QString::fromLocal8Bit(process.readAllStandardError()).remove('\r');
        const QRegularExpression line("^Could not open \\S.*/" + QRegularExpression::escape(file) +
                                          " for writing: .+$",
                                      QRegularExpression::MultilineOption);
        QVERIFY2(line.match(errors).hasMatch(), qPrintable(errors));
    }

    // What fits a file's buffer takes another way to the disk than what does
    // not.
    void aFullDiskKeepsWhatWasThere_data()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("small") << 100;
        QTest::newRow("large") << 20000;
    }

    void aFullDiskKeepsWhatWasThere()
    {
        QFETCH(int, size);
        const SmallDisk disk(path("data"));
        if (!disk.works())
            QSKIP("This user may not mount a disk.");
        QVERIFY(QDir().mkdir(disk.path() + "/download"));
        QVERIFY(QDir::setCurrent(disk.path()));
        const QByteArray full = pattern(0, size);
        int kept = 0;
        int replaced = 0;
        int offered = 0;
        for (int room = 0; room < 16; ++room) {
            writeFile("data/compare.json", "old");
            QVERIFY(disk.fillUp(room * 4096));
            clearLog();
            offers_.clear();
            check(with(with(newer(), "installer", {{"size", size}}), "table", {{"size", size}}));
            const QByteArray table = readFile("data/compare.json");
            const bool isOld = table == "old";
            QVERIFY2(isOld || table == full, qPrintable(QString::number(table.size())));
            QCOMPARE(loggedCount("down compare.json fail"), isOld ? 1 : 0);
            (isOld ? kept : replaced) += 1;
            const bool isThere = QFileInfo::exists(installer());
            QCOMPARE(offers_.size(), isThere ? 1 : 0);
            if (isThere)
                QCOMPARE(readFile("data/download/Setup.exe"), full);
            offered += isThere;
            QFile::remove(installer());
            disk.makeRoom();
        }
        QVERIFY(QDir::setCurrent(dir()));
        QVERIFY(kept > 0);
        QVERIFY(replaced > 0);
        QVERIFY(offered > 0 && offered < 16);
    }
};

KOLM_TEST_MAIN(TestUpdateFiles)
#include "tst_update_files.moc"
