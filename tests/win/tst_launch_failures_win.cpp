#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/win/installed_program_win.h"

#include <QDir>
#include <QFile>

using namespace installed_program;

namespace {

const QSize mainWindow(1360, 875);
const QString elsewhere = QStringLiteral("C:\\moved away");

bool makeTextFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write("This is no program.\r\n") > 0;
}

bool hasLogged(const QString &file)
{
    return log().contains("[steam] " + file + " could not be started: ");
}

} // namespace

// The installed program on a PC whose registry speaks of a Steam or SteamVR that
// is not what it says: nothing may wait for somebody to answer a message box.
class LaunchFailuresWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        QVERIFY(installAll());
        QVERIFY(layOutFiles(true));
    }

    void cleanup()
    {
        const bool failed = QTest::currentTestFailed();
        const bool restored = endSteam() && installAll(); // whoever comes next finds all as it was
        TestCase::cleanup();
        if (failed)
            qInfo().noquote() << "The program's log:\n" + log();
        QVERIFY(restored);
    }

    void aSteamThatCannotBeStartedIsSaidAndTheProgramGoesOn_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("reason");
        QTest::newRow("its folder is gone") << elsewhere << QStringLiteral("(error 3)");
        QTest::newRow("its file is no program")
            << QFileInfo(steamProgram()).path() << QStringLiteral("(error 193)");
    }

    void aSteamThatCannotBeStartedIsSaidAndTheProgramGoesOn()
    {
        QFETCH(QString, folder);
        QFETCH(QString, reason);
        const QString steam = QDir::toNativeSeparators(folder) + "\\steam.exe";
        QVERIFY(sayWhereSteamIs(QDir::toNativeSeparators(folder)));
        if (folder != elsewhere)
            QVERIFY(makeTextFile(steam));

        Copy program;
        QVERIFY(program.start());
        QVERIFY(waitUntil([&] { return program.showsMessageBox() || hasLogged(steam); }));
        QVERIFY(!program.showsMessageBox());
        QVERIFY2(log().contains(reason), qPrintable(log()));
        QVERIFY(log().contains("[steam] startupSteam failed"));
        QVERIFY(opensItsWindow(program));
        QVERIFY(!program.showsMessageBox());
        closesWhenAsked(&program);
    }

    void steamVrThatCannotBeAskedToCloseIsWaitedForWithoutAWord_data()
    {
        QTest::addColumn<bool>("folderIsGone");
        QTest::newRow("its folder is gone") << true;
        QTest::newRow("vrstartup.exe is gone") << false;
    }

    void steamVrThatCannotBeAskedToCloseIsWaitedForWithoutAWord()
    {
        QFETCH(bool, folderIsGone);
        const QString tool = folderIsGone
                                 ? elsewhere + QStringLiteral("\\bin\\win64\\vrstartup.exe")
                                 : steamVrTool();
        if (folderIsGone)
            QVERIFY(sayWhereSteamVrIs(elsewhere));
        else
            QVERIFY(QFile::remove(tool));
        QVERIFY(QProcess::startDetached(QFileInfo(steamVrTool()).path() + "/vrmonitor.exe",
                                        QStringList()));

        Copy program;
        QVERIFY(program.start());
        QVERIFY(waitUntil([&] { return program.showsMessageBox() || hasLogged(tool); }));
        QVERIFY(!program.showsMessageBox());
        // It waits for the user to close SteamVR, and then goes on.
        QVERIFY(!program.window());
        QVERIFY(endSteam());
        QVERIFY(opensItsWindow(program));
        QVERIFY(!program.showsMessageBox());
        closesWhenAsked(&program);
    }

private:
    static bool opensItsWindow(const Copy &program)
    {
        return waitUntil([&] {
            return program.showsMessageBox() ||
                   (program.window() && program.window()->size() == mainWindow);
        });
    }

    static void closesWhenAsked(Copy *program)
    {
        program->askToClose();
        // By now it may have started SteamVR, which nothing here can ask to close.
        QVERIFY(waitUntil([&] {
            endSteam();
            return !program->isRunning();
        }));
        const std::optional<int> code = program->waitForEnd();
        QVERIFY(code);
        QCOMPARE(*code, 0);
    }
};

KOLM_GUI_TEST_MAIN(LaunchFailuresWinTest)
#include "tst_launch_failures_win.moc"
