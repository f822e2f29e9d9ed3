#include "pc/command_pipe.h"
#include "pc/elevated_launch.h"
#include "pc/foreign_settings.h"
#include "pc/own_variables.h"
#include "pc/shell_launch.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <chrono>
#include <functional>
#include <string>

#include <windows.h>

using namespace std::chrono_literals;

// Starts a program, which needs no argument.
using Way = std::function<void(const QString &program)>;
Q_DECLARE_METATYPE(Way)

namespace {

const QString scheme = QStringLiteral("kolm-environment");

void runInAPipe(const QString &program)
{
    CommandPipe pipe('"' + program.toLocal8Bit() + '"');
    char bytes[64];
    while (pipe.read(bytes, sizeof bytes) >= 0) {
    }
}

void runWithWhatIsHandedOn(const QString &program)
{
    QProcess process;
    process.setProcessEnvironment(own_variables::forChildren());
    process.start(program, QStringList());
    QVERIFY(process.waitForFinished());
}

// Steam is told through it to start SteamVR.
void openItsUrl(const QString &program)
{
    const QString key = scheme + QStringLiteral("\\shell\\open\\command");
    const std::wstring command = QStringLiteral("\"%1\"").arg(program).toStdWString();
    RegSetKeyValueW(HKEY_CLASSES_ROOT, key.toStdWString().c_str(), nullptr, REG_SZ, command.c_str(),
                    static_cast<DWORD>((command.size() + 1) * 2));
    RegSetKeyValueW(HKEY_CLASSES_ROOT, scheme.toStdWString().c_str(), L"URL Protocol", REG_SZ, L"",
                    2);
    shell_launch::startDetached(QStringLiteral("explorer"), {scheme + QStringLiteral("://x")});
}

} // namespace

// What is started in whatever way sees nothing of them.
class OwnVariablesWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        RegDeleteTreeW(HKEY_CLASSES_ROOT, scheme.toStdWString().c_str());
        TestCase::cleanup();
    }

    void noChildSeesThem_data()
    {
        QTest::addColumn<Way>("start");
        QTest::newRow("the shell") << Way([](const QString &program) {
            shell_launch::openHiddenAndWait(program, QString(), 1min);
        });
        QTest::newRow("on its own") << Way(
            [](const QString &program) { QVERIFY(shell_launch::startDetached(program, {})); });
        QTest::newRow("with other rights") << Way([](const QString &program) {
            elevated_launch::start(program, QDir::toNativeSeparators(QDir::tempPath()),
                                   [](const QString &) { return true; });
        });
        QTest::newRow("a command") << Way(runInAPipe);
        QTest::newRow("Qt") << Way([](const QString &program) { QProcess::execute(program, {}); });
        QTest::newRow("Qt, with an environment") << Way(runWithWhatIsHandedOn);
        QTest::newRow("through the desktop") << Way(openItsUrl);
    }
    void noChildSeesThem()
    {
        QFETCH(Way, start);
        const QString program = inTemp(QStringLiteral("noter.exe"));
        const QString noted = inTemp(QStringLiteral("noted"));
        QFile::remove(noted);
        QVERIFY(QFile::exists(program) || QFile::copy(QStringLiteral(KOLM_TEST_HELPER), program));
        qputenv("KOLM_NOTE_ENVIRONMENT", noted.toLocal8Bit());
        own_variables::set("KOLM_TEST_OWN", "512");
        start(program);
        // For a moment after it is there, nobody can open it.
        QFile file(noted);
        QTRY_VERIFY_WITH_TIMEOUT(file.isOpen() || file.open(QIODevice::ReadOnly), 60000);
        const QByteArray environment = file.readAll();
        QVERIFY(environment.contains("KOLM_NOTE_ENVIRONMENT="));
        QVERIFY(!environment.contains("KOLM_TEST_OWN"));
        QCOMPARE(qgetenv("KOLM_TEST_OWN"), QByteArray("512"));
    }

    void whatIsHiddenIsForChildrenAlone()
    {
        qputenv("KOLM_TEST_FOREIGN", "de_DE");
        own_variables::hide("KOLM_TEST_FOREIGN");
        own_variables::set("KOLM_TEST_OWN", "512");
        QVERIFY(!qEnvironmentVariableIsSet("KOLM_TEST_FOREIGN"));
        QCOMPARE(qEnvironmentVariable("KOLM_TEST_FOREIGN"), QString());
        QCOMPARE(qgetenv("KOLM_TEST_OWN"), QByteArray("512"));
        const QProcessEnvironment handedOn = own_variables::forChildren();
        QCOMPARE(handedOn.value("KOLM_TEST_FOREIGN"), QString("de_DE"));
        QVERIFY(!handedOn.contains("KOLM_TEST_OWN"));
    }

    void whatWouldLoadOrChangeSomethingIsForeign()
    {
        for (const char *name :
             {"LANG", "lang", "LC_ALL", "LANGUAGE", "QT_PLUGIN_PATH", "QT_QPA_PLATFORM",
              "QT_QPA_PLATFORM_PLUGIN_PATH", "QML2_IMPORT_PATH", "QML_IMPORT_PATH", "qt_opengl",
              "QT_OPENGL_DLL", "QT_LOGGING_RULES", "QSG_RHI", "QV4_FORCE_INTERPRETER",
              "OPENSSL_CONF", "QT_FATAL_WARNINGS"})
            QVERIFY2(foreign_settings::isForeign(name), name);
        for (const char *name : {"PATH", "QT", "TEMP", "QT_QUICK_BACKEND", "QSG_RENDER_LOOP",
                                 "QSG_INFO", "SystemRoot", "KOLM_QT_X", ""})
            QVERIFY2(!foreign_settings::isForeign(name), name);
    }

private:
    // A path that every code page can write.
    static QString inTemp(const QString &name)
    {
        return QDir::toNativeSeparators(QDir::temp().filePath(name));
    }
};

KOLM_TEST_MAIN(OwnVariablesWinTest)
#include "tst_own_variables_win.moc"
