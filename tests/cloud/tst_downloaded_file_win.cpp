#include "cloud/downloaded_file.h"
#include "tests/base/denied_access.h"
#include "tests/support/test_case.h"

#include <QFile>

// A system that refuses to put a file in the place of one that somebody has open.
class DownloadedFileWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void aFileThatSomebodyHasOpenIsHeld()
    {
        writeFile("Setup.exe", "old");
        {
            const LockedFile scanner(path("Setup.exe"));
            QVERIFY(scanner.works());
            QCOMPARE(saveDownload("new", path("Setup.exe")), Saved::Held);
        }
        QCOMPARE(readFile("Setup.exe"), QByteArray("old"));
        QCOMPARE(saveDownload("new", path("Setup.exe")), Saved::Done);
        QCOMPARE(readFile("Setup.exe"), QByteArray("new"));
    }
};

KOLM_TEST_MAIN(DownloadedFileWinTest)
#include "tst_downloaded_file_win.moc"
