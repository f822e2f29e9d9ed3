#include "pc/library_search.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QLibrary>

#include <windows.h>

// Which libraries are found by their name alone.
class LibrarySearchWinTest : public TestCase
{
    Q_OBJECT

    // Whether one of that name is found; it does not stay.
    static bool isFound(const wchar_t *name)
    {
        const HMODULE library = LoadLibraryW(name);
        return library && FreeLibrary(library);
    }

private slots:
    void neitherThoseOfTheWorkingFolderNorOfTheSearchPath()
    {
        QVERIFY(QFile::copy(QStringLiteral(PLANTED), path("kolm-in-folder.dll")));
        const QString onPath = path("on path");
        QVERIFY(QDir().mkpath(onPath));
        QVERIFY(QFile::copy(QStringLiteral(PLANTED), onPath + "/kolm-on-path.dll"));
        SetEnvironmentVariableW(L"PATH", QDir::toNativeSeparators(onPath).toStdWString().c_str());
        QVERIFY(isFound(L"kolm-in-folder.dll"));
        QVERIFY(isFound(L"kolm-on-path.dll"));

        library_search::trustOwnFoldersOnly(QString());
        QVERIFY(!isFound(L"kolm-in-folder.dll"));
        QVERIFY(!isFound(L"kolm-on-path.dll"));
        QVERIFY(isFound(L"dbghelp.dll"));
        // As Qt loads its plugins.
        QVERIFY(QLibrary(path("kolm-in-folder.dll")).load());
    }
};

KOLM_TEST_MAIN(LibrarySearchWinTest)
#include "tst_library_search_win.moc"
