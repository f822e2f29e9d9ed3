#include "pc/shell_launch.h"
#include "tests/support/test_case.h"

#include <QDir>
#include <QFile>

#include <chrono>
#include <future>

#include <windows.h>

using namespace std::chrono_literals;

using shell_launch::Outcome;

namespace {

// Whether this process shows a message box; one that is there is closed.
bool closeMessageBox()
{
    HWND box = nullptr;
    while ((box = FindWindowExW(nullptr, box, L"#32770", nullptr))) {
        DWORD owner = 0;
        GetWindowThreadProcessId(box, &owner);
        if (owner == GetCurrentProcessId())
            return PostMessageW(box, WM_CLOSE, 0, 0) != FALSE;
    }
    return false;
}

// Closes message boxes from its making to boxes(): a launch that waits for one
// would wait for ever.
class BoxWatch
{
public:
    BoxWatch()
        : watch_(std::async(std::launch::async, [this] {
              int boxes = 0;
              const std::future<void> over = over_.get_future();
              while (over.wait_for(20ms) == std::future_status::timeout)
                  boxes += closeMessageBox() ? 1 : 0;
              return boxes;
          }))
    {
    }
    // How often there was one.
    int boxes()
    {
        over_.set_value();
        return watch_.get();
    }

private:
    std::promise<void> over_;
    std::future<int> watch_;
};

} // namespace

class ShellLaunchWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        QVERIFY(QFile::copy(QStringLiteral(KOLM_TEST_HELPER), path(QStringLiteral("helper.exe"))));
    }

    void waitsForTheEnd()
    {
        const Outcome outcome = shell_launch::openHiddenAndWait(QStringLiteral(KOLM_TEST_HELPER),
                                                                QStringLiteral("last 300"), 1min);
        QVERIFY(outcome.started);
        QCOMPARE(outcome.wait, Outcome::Ended);
        QVERIFY(outcome.elapsed >= 300ms);
        QCOMPARE(outcome.startError, 0u);
    }

    void leavesAProgramRunningAfterItsTime()
    {
        const Outcome outcome = shell_launch::openHiddenAndWait(QStringLiteral(KOLM_TEST_HELPER),
                                                                QStringLiteral("last 3000"), 200ms);
        QVERIFY(outcome.started);
        QCOMPARE(outcome.wait, Outcome::TimedOut);
        QVERIFY(outcome.elapsed >= 200ms);
    }

    void passesTheParametersAndHidesTheWindow()
    {
        const Outcome outcome = shell_launch::openHiddenAndWait(
            QStringLiteral(KOLM_TEST_HELPER), QStringLiteral("note noted -silent"), 1min);
        QVERIFY(outcome.started);
        QCOMPARE(outcome.wait, Outcome::Ended);
        const QStringList noted = noteOf(QStringLiteral("noted"));
        QVERIFY2(noted[0].endsWith(QLatin1String(" note noted -silent")), qPrintable(noted[0]));
        QCOMPARE(noted[1].toInt(), SW_HIDE);
    }

    void startsWhatTheNarrowPathCanName()
    {
        // Blanks, an ampersand and an accent are in every western code page.
        QVERIFY(QFile::copy(QStringLiteral(KOLM_TEST_HELPER),
                            QDir::temp().filePath(QString::fromUtf8("a & é.exe"))));
        const QString program =
            QDir::toNativeSeparators(QDir::temp().filePath(QString::fromUtf8("a & é.exe")));
        const Outcome outcome =
            shell_launch::openHiddenAndWait(program, QStringLiteral("last 0"), 1min);
        QVERIFY(QFile::remove(program));
        QVERIFY(outcome.started);
        QCOMPARE(outcome.wait, Outcome::Ended);
    }

    void saysThatItCouldNotStart_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<unsigned int>("error");
        QTest::newRow("no such file")
            << QStringLiteral("C:\\windows\\no such program.exe") << unsigned(ERROR_FILE_NOT_FOUND);
        QTest::newRow("no such folder")
            << QStringLiteral("C:\\no such folder\\steam.exe") << unsigned(ERROR_PATH_NOT_FOUND);
        // In a folder that the narrow path can name.
        QTest::newRow("no program")
            << QDir::toNativeSeparators(QDir::temp().filePath(QStringLiteral("steam.exe")))
            << unsigned(ERROR_BAD_EXE_FORMAT);
    }

    void saysThatItCouldNotStart()
    {
        QFETCH(QString, program);
        QFETCH(unsigned int, error);
        QFile text(QDir::temp().filePath(QStringLiteral("steam.exe")));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("This is no program.\r\n") > 0);
        text.close();
        // A click that waits for its turn; a message box would let it have it.
        bool clicked = false;
        QMetaObject::invokeMethod(
            this, [&clicked] { clicked = true; }, Qt::QueuedConnection);

        BoxWatch watch;
        const Outcome outcome = shell_launch::openHiddenAndWait(program, QString(), 1min);
        const bool clickedMeanwhile = clicked;
        const int boxes = watch.boxes();
        QVERIFY(!clickedMeanwhile);
        QCOMPARE(boxes, 0); // what there is to say, the program says itself
        QVERIFY(!outcome.started);
        QCOMPARE(outcome.startError, error);
        QVERIFY(!outcome.startErrorText.trimmed().isEmpty());
        QTRY_VERIFY(clicked);
    }

    void startsDetachedWithItsArguments()
    {
        QVERIFY(shell_launch::startDetached(
            helper(QStringLiteral("helper.exe")),
            {QStringLiteral("note"), QStringLiteral("noted"), QStringLiteral("two words")}));
        const QStringList noted = noteOf(QStringLiteral("noted"));
        QVERIFY2(noted[0].endsWith(QLatin1String(" note noted \"two words\"")),
                 qPrintable(noted[0]));
    }

    void aProgramThatIsNotThereDoesNotStart()
    {
        QVERIFY(!shell_launch::startDetached(helper(QStringLiteral("missing.exe")), {}));
    }

    // The way to SteamVR: the desktop's own program is given a URL, and whoever has
    // registered the scheme gets it.
    void handsAUrlToItsProgram()
    {
        const QString command =
            QStringLiteral("\"%1\" note \"%2\" \"%3\"")
                .arg(helper(QStringLiteral("helper.exe")),
                     QDir::toNativeSeparators(path(QStringLiteral("noted"))), QStringLiteral("%1"));
        HKEY scheme = nullptr;
        QCOMPARE(RegCreateKeyW(HKEY_CLASSES_ROOT, L"kolm-test\\shell\\open\\command", &scheme), 0);
        const std::wstring wide = command.toStdWString();
        RegSetValueExW(scheme, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE *>(wide.c_str()),
                       static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(scheme);
        RegSetKeyValueW(HKEY_CLASSES_ROOT, L"kolm-test", L"URL Protocol", REG_SZ, L"", 2);

        const bool started = shell_launch::startDetached(
            QStringLiteral("explorer"), {QStringLiteral("kolm-test://rungameid/250820")});
        const QStringList noted = noteOf(QStringLiteral("noted"));
        RegDeleteTreeW(HKEY_CLASSES_ROOT, L"kolm-test");
        QVERIFY(started);
        QVERIFY2(noted[0].endsWith(QLatin1String("\"kolm-test://rungameid/250820\"")),
                 qPrintable(noted[0]));
    }

private:
    QString helper(const QString &name) const { return QDir::toNativeSeparators(path(name)); }

    // Command line and show command that a helper has noted; empty after a while
    // without any.
    QStringList noteOf(const QString &name) const
    {
        QStringList lines;
        [&] {
            QTRY_COMPARE_WITH_TIMEOUT(
                (lines = QString::fromUtf8(readFile(name)).split('\n')).size(), 3, 30000);
        }();
        return lines;
    }
};

KOLM_TEST_MAIN(ShellLaunchWinTest)
#include "tst_shell_launch_win.moc"
