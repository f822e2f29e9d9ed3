#include "pc/downloaded_program.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>

#include <windows.h>

// A program from the net: its note, its start, its signature.
class DownloadedProgramWinTest : public TestCase
{
    Q_OBJECT

    const QString name_ = QString::fromUtf8("Setup & 中.exe");
    QString program() const { return path(name_); }

private slots:
    void init()
    {
        TestCase::init();
        QVERIFY(QFile::copy(QStringLiteral(KOLM_TEST_HELPER), program()));
    }

    // Not every disk keeps notes; the file itself stays as it was in any case.
    void aFileIsMarkedWhereTheDiskCan()
    {
        const QByteArray before = readFile(name_);
        const bool isMarked = downloaded_program::mark(program(), "https://h/a b\r\nZoneId=0");
        QVERIFY(!before.isEmpty());
        QVERIFY(readFile(name_) == before);
        const std::wstring stream =
            (QDir::toNativeSeparators(program()) + ":Zone.Identifier").toStdWString();
        FILE *const note = _wfopen(stream.c_str(), L"rb");
        QCOMPARE(note != nullptr, isMarked);
        if (!note)
            QSKIP("This disk keeps no notes.");
        char text[300] = {};
        std::fread(text, 1, sizeof text - 1, note);
        std::fclose(note);
        QCOMPARE(QByteArray(text),
                 QByteArray("[ZoneTransfer]\r\nZoneId=3\r\nHostUrl=https://h/a b ZoneId=0\r\n"));
    }

    void aProgramIsOpened()
    {
        const QString noted = path("noted");
        SetEnvironmentVariableW(L"KOLM_NOTE_ENVIRONMENT",
                                QDir::toNativeSeparators(noted).toStdWString().c_str());
        const bool isOpened = downloaded_program::open(program());
        SetEnvironmentVariableW(L"KOLM_NOTE_ENVIRONMENT", nullptr);
        QVERIFY(isOpened);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(noted), 30000);
    }

    void whatSomebodyWritesToIsNotOpened()
    {
        const HANDLE writer =
            CreateFileW(QDir::toNativeSeparators(program()).toStdWString().c_str(), GENERIC_WRITE,
                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr);
        QVERIFY(writer != INVALID_HANDLE_VALUE);
        QVERIFY(!downloaded_program::open(program()));
        CloseHandle(writer);
    }

    void whatIsNotThereIsNotOpened() { QVERIFY(!downloaded_program::open(path("missing.exe"))); }

    void nobodySignedThis()
    {
        QCOMPARE(downloaded_program::signerOf(program()), QString());
        QCOMPARE(downloaded_program::signerOf(path("missing.exe")), QString());
    }
};

KOLM_TEST_MAIN(DownloadedProgramWinTest)
#include "tst_downloaded_program_win.moc"
