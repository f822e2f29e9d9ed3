#include "pc/adb_shell.h"
#include "pc/system_programs.h"
#include "tests/support/test_case.h"
#include "usb/adb_rules.h"

class AdbShellWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void aLineGoesToTheCommandInterpreterAsItIs()
    {
        const QString line = "C:/q^&a/adb.exe devices && C:/q^&a/adb.exe forward --list";
        const adb_shell::Call call = adb_shell::call(line);
        QCOMPARE(call.program, system_programs::pathOf("cmd"));
        QCOMPARE(call.arguments, QStringList({"/c", line}));
    }

    void aLineNamesTheAdbInUse_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *name, const QString &path, const QString &word) {
            QTest::newRow(name) << path << word + " devices && " + word + " forward --list";
        };
        // Ordinary paths stand in the line byte for byte.
        for (const char *path : {"C:/KOLM/ADB/adb.exe", "D:\\platform-tools\\adb.exe",
                                 "C:/a+b/[c]/{d}/~adb~1/#adb!/adb.exe", "//server/share$/adb.exe"})
            row(path, path, path);
        row("Chinese", QString::fromUtf8("D:/工具/adb.exe"), QString::fromUtf8("D:/工具/adb.exe"));
        // With a blank the folder finds adb, whatever else is in the path.
        row("a blank", "C:/Program Files (x86)/KOLM/ADB/adb.exe", "adb");
        row("a blank and an ampersand", "C:/q & a/adb.exe", "adb");
        row("parentheses", "C:\\tools(x86)\\adb.exe", "adb");
        row("a closing parenthesis", "C:\\1)\\adb.exe", "adb");
        row("percent", "C:/100%/adb.exe", "adb");
        row("a variable", "C:/%OS%/adb.exe", "adb");
        row("comma", "C:/a,b/adb.exe", "adb");
        row("semicolon", "C:/a;b/adb.exe", "adb");
        row("equals sign", "C:/a=b/adb.exe", "adb");
        row("comma and ampersand", "C:/a,b&c/adb.exe", "adb");
        // What the interpreter would take for its own.
        row("ampersand", "C:/q&a/adb.exe", "C:/q^&a/adb.exe");
        row("caret", "C:/a^b/adb.exe", "C:/a^^b/adb.exe");
    }

    void aLineNamesTheAdbInUse()
    {
        QFETCH(QString, path);
        QFETCH(QString, line);
        for (const int mode : {adb_rules::Shipped, adb_rules::AlreadyRunning}) {
            QCOMPARE(adb_rules::commandLine("adb devices && adb forward --list", mode,
                                            adb_shell::word(path)),
                     line);
        }
    }
};

KOLM_TEST_MAIN(AdbShellWinTest)
#include "tst_adb_shell_win.moc"
