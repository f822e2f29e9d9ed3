#include "pc/elevated_launch.h"
#include "tests/pc/test_signature_win.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>

#include <windows.h>

// Who may be started with the user's full rights.
class ElevatedLaunchWinTest : public TestCase
{
    Q_OBJECT

    // What was answered by whom is asked, in the order of the questions.
    QStringList asked_;
    bool answer_ = true;

    qint64 start(const QString &program)
    {
        return elevated_launch::start(program, dir(), [this](const QString &signer) {
            asked_ << (signer.isEmpty() ? QStringLiteral("nobody") : signer);
            // Nobody changes the program any more.
            QFile file(path("program.exe"));
            asked_ << (file.open(QIODevice::ReadWrite) ? "can be written" : "is held");
            return answer_;
        });
    }
    QString lay(const QString &from)
    {
        QFile::copy(from, path("program.exe"));
        return path("program.exe");
    }
    bool hasRun() const { return QFile::exists(path("program.heard")); }

private slots:
    void init()
    {
        TestCase::init();
        asked_.clear();
        answer_ = true;
    }

    void whatNobodyHasSignedIsSaidToBeSo()
    {
        answer_ = false;
        QCOMPARE(start(lay(QStringLiteral(KOLM_TALKER))), elevated_launch::refused);
        QCOMPARE(asked_, QStringList({"nobody", "is held"}));
        QVERIFY(!hasRun());
    }

    void aSignatureOfSomebodyUnknownIsNone()
    {
        if (!test_signature::isAvailable())
            QSKIP("Nobody's signature can be trusted here.");
        answer_ = false;
        start(lay(test_signature::signedProgram()));
        if (asked_.value(0) == test_signature::signer())
            QSKIP("This Wine trusts everybody who has signed.");
        QCOMPARE(asked_, QStringList({"nobody", "is held"}));
    }

    void aTrustedOneIsToldAndTheProgramStarted()
    {
        if (!test_signature::isAvailable())
            QSKIP("Nobody's signature can be trusted here.");
        const test_signature::Trusted trusted;
        QVERIFY(start(lay(test_signature::signedProgram())) > 32);
        QCOMPARE(asked_, QStringList({test_signature::signer(), "is held"}));
        QTRY_VERIFY_WITH_TIMEOUT(hasRun(), 30000);
    }

    void oneThatDoesNotFitTheProgramIsNone()
    {
        if (!test_signature::isAvailable())
            QSKIP("Nobody's signature can be trusted here.");
        const test_signature::Trusted trusted;
        QFile file(lay(test_signature::signedProgram()));
        QVERIFY(file.setPermissions(file.permissions() | QFile::WriteUser));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.seek(file.size() / 3));
        const char was = file.peek(1).at(0);
        file.putChar(static_cast<char>(was ^ 1));
        file.close();
        answer_ = false;
        start(path("program.exe"));
        QCOMPARE(asked_, QStringList({"nobody", "is held"}));
    }

    void whatSomebodyWritesToIsNotEvenAskedAbout()
    {
        QFile file(lay(QStringLiteral(KOLM_TALKER)));
        QVERIFY(file.setPermissions(file.permissions() | QFile::WriteUser));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QCOMPARE(start(path("program.exe")), qint64(26));
        QCOMPARE(asked_, QStringList());
    }

    void norIsWhatIsMissing()
    {
        QCOMPARE(start(path("none.exe")), qint64(ERROR_FILE_NOT_FOUND));
        QCOMPARE(start(path("none/none.exe")), qint64(ERROR_FILE_NOT_FOUND));
        QCOMPARE(asked_, QStringList());
    }
};

KOLM_TEST_MAIN(ElevatedLaunchWinTest)
#include "tst_elevated_launch_win.moc"
