#include "base/manual_clock.h"
#include "config/config_manager.h"
#include "controller/streaming_settings.h"
#include "steamvr/steam_manager.h"
#include "tests/support/test_case.h"

#include <QFile>
#include <QProcess>

#include <optional>
#include <string>

#include <windows.h>

namespace {

const wchar_t steamVrEntry[] =
    L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Steam App 250820";

} // namespace

// A change of settings while SteamVR cannot be asked to close, against the real
// registry, processes and shell.
class SecondConfirmWinTest : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        left_ = path(QStringLiteral("vrmonitor.exe"));
        QVERIFY(QFile::copy(QStringLiteral(KOLM_TEST_HELPER), left_));
        const std::wstring gone = L"C:\\moved away";
        QCOMPARE(RegSetKeyValueW(HKEY_LOCAL_MACHINE, steamVrEntry, L"InstallLocation", REG_SZ,
                                 gone.c_str(), static_cast<DWORD>((gone.size() + 1) * 2)),
                 LSTATUS(0));
    }

    void cleanup()
    {
        RegDeleteKeyW(HKEY_LOCAL_MACHINE, steamVrEntry);
        TestCase::cleanup();
    }

    void aSecondConfirmComesAfterTheFirst()
    {
        ManualClock clock;
        ConfigManager config(dir(), [] { return false; });
        config.loadDeviceSettings(false, 0);
        SteamManager steam(
            {clock, config, dir(), dir(), [](const std::function<void()> &) { return true; }});
        Mutex lock;
        StreamingSettings settings(clock, config, steam, lock);

        QProcess steamVr;
        steamVr.start(left_, {QStringLiteral("last"), QStringLiteral("1500")});
        QVERIFY(steamVr.waitForStarted());
        QStringList said;
        std::optional<LaunchFailure> whyNotAsked;
        // The user confirms again, as soon as the program has an ear for it.
        const auto confirmAgain = [&] {
            said << QStringLiteral("second begins");
            settings.restartAround([&] { said << QStringLiteral("second writes"); });
        };
        QMetaObject::invokeMethod(&settings, confirmAgain, Qt::QueuedConnection);
        const QString tool = QStringLiteral("C:\\moved away\\bin\\win64\\vrstartup.exe");
        announce("[steam] " + tool + " could not be started: " +
                 qt_error_string(ERROR_PATH_NOT_FOUND).trimmed() + " (error 3)");
        settings.restartAround([&] {
            said << QStringLiteral("first writes");
            whyNotAsked = steam.stopFailure();
        });
        QTRY_COMPARE(said, QStringList({"first writes", "second begins", "second writes"}));
        QVERIFY(lock.tryLock());
        lock.unlock();
        QVERIFY(whyNotAsked);
        QCOMPARE(whyNotAsked->file, tool);
        QVERIFY(whyNotAsked->isMissing());
        QVERIFY(!steam.stopFailure()); // by then there was nobody to ask
    }

private:
    QString left_; // a program that passes for SteamVR's
};

KOLM_TEST_MAIN(SecondConfirmWinTest)
#include "tst_second_confirm_win.moc"
