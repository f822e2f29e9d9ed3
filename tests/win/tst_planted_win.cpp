#include "tests/support/gui_test_main.h"
#include "tests/support/test_case.h"
#include "tests/win/installed_program_win.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>

#include <windows.h>

using namespace installed_program;

// What others have put where the installed program may come across it does not run.
class PlantedWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(installAll()); }

    void init()
    {
        TestCase::init();
        QVERIFY(QDir().mkpath(folder + "/platforms"));
        for (const char *name :
             {"powershell.exe", "cmd.exe", "netsh.exe", "taskkill.exe", "explorer.exe"})
            QVERIFY(QFile::copy(QStringLiteral(KOLM_TALKER), folder + '/' + name));
        for (const char *name : {"version.dll", "dbghelp.dll", "dwmapi.dll", "kolm-nobodys.dll",
                                 "platforms/qwindows.dll"})
            QVERIFY(QFile::copy(QStringLiteral(PLANTED), folder + '/' + name));
    }

    void cleanup()
    {
        end("steam.exe");
        QDir(folder).removeRecursively();
        TestCase::cleanup();
    }

    // Else nothing below would prove anything.
    void whatWasPlantedWorks()
    {
        const QString library = QDir::toNativeSeparators(folder + "/kolm-nobodys.dll");
        const HMODULE loaded = LoadLibraryW(library.toStdWString().c_str());
        QVERIFY(loaded && FreeLibrary(loaded));
        QCOMPARE(QProcess::execute(folder + "/netsh.exe", {"x"}), 1);
        QCOMPARE(traces(), QStringList({"kolm-nobodys.dll.loaded", "netsh.heard"}));
    }

    void nothingOfItRuns()
    {
        QVERIFY(layOutFiles(true));
        Copy program;
        const QString native = QDir::toNativeSeparators(folder);
        program.setWorkingFolder(folder);
        program.putIntoEnvironment("PATH", native);
        program.putIntoEnvironment("QT_PLUGIN_PATH", native);
        program.putIntoEnvironment("QT_QPA_PLATFORM_PLUGIN_PATH", native + "\\platforms");
        program.putIntoEnvironment("QML2_IMPORT_PATH", native);
        program.putIntoEnvironment("QT_QPA_PLATFORM", "nothing:like this");
        program.putIntoEnvironment("LANG", "ja_JP.UTF-8");
        QVERIFY(program.start());
        QVERIFY(waitUntil([&] { return program.window().has_value(); }));
        QVERIFY(waitUntil([] { return runs("steam.exe"); }));
        QVERIFY(!log().contains("json language: Japanese"));
        QVERIFY(log().contains("json language: "));
        program.askToClose();
        QCOMPARE(program.waitForEnd(), std::optional<int>(0));
        QCOMPARE(traces(), QStringList());
    }

private:
    QStringList traces() const
    {
        QStringList found;
        QDirIterator files(folder, {"*.loaded", "*.heard"}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext())
            found << QDir(folder).relativeFilePath(files.next());
        found.sort();
        return found;
    }

    const QString folder = QStringLiteral("C:/planted");
};

KOLM_GUI_TEST_MAIN(PlantedWinTest)
#include "tst_planted_win.moc"
