#include "tests/steamvr/steam_fixture.h"
#include "tests/support/test_case.h"

#include <QDir>

namespace {

const QString uninstall = QStringLiteral(
    "HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Microsoft\\Windows\\CurrentVersion\\Uninstall");
const QString steamKey = QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\WOW6432Node\\Valve\\Steam");

} // namespace

class TestSteamDiscovery : public TestCase
{
    Q_OBJECT

private slots:
    void anUninstallEntryNamedSteamMeansInstalled()
    {
        SteamFixture pc(dir());
        pc.pc.registry.setText(uninstall + "\\Other", "DisplayName", "Another program");
        pc.pc.registry.setText(uninstall + "\\Steam", "DisplayName", "Steam");
        QVERIFY(pc.steam().steamInstalled());
    }

    void anEntryOfASimilarNameDoesNot()
    {
        SteamFixture pc(dir());
        pc.pc.registry.setText(uninstall + "\\Steam Link", "DisplayName", "Steam Link");
        pc.pc.registry.setText(uninstall + "\\steam", "DisplayName", "steam");
        QVERIFY(!pc.steam().steamInstalled());
    }

    void steamsOwnKeyMeansInstalled()
    {
        SteamFixture pc(dir());
        pc.pc.registry.addKey(steamKey);
        QVERIFY(pc.steam().steamInstalled());
    }

    void theAnswerIsTakenOnce()
    {
        SteamFixture pc(dir());
        pc.pc.registry.addKey(steamKey);
        QVERIFY(pc.steam().steamInstalled());
        pc.pc.registry.removeKey(steamKey);
        QVERIFY(pc.steam().steamInstalled());
    }

    void anInstallPathThatIsTooLongIsPassedOver()
    {
        SteamFixture pc(dir());
        pc.pc.registry.setText(steamKey, "InstallPath", "C:\\" + QString(257, 'S'));
        pc.pc.registry.setText(uninstall + "\\Steam", "DisplayName", "Steam");
        pc.pc.registry.setText(uninstall + "\\Steam", "InstallLocation",
                               "C:\\" + QString(256, 'S'));
        QCOMPARE(pc.steam().steamInstallPath(), "C:\\" + QString(256, 'S'));
    }

    void theInstallPathOfSteamsKeyWinsEvenIfTheFolderIsGone()
    {
        SteamFixture pc(dir());
        pc.pc.registry.setText(steamKey, "InstallPath", "Z:\\gone");
        pc.pc.registry.setText(uninstall + "\\Steam", "DisplayName", "Steam");
        pc.pc.registry.setText(uninstall + "\\Steam", "InstallLocation", "D:\\Steam");
        QCOMPARE(pc.steam().steamInstallPath(), QString("Z:\\gone"));
    }

    void thenTheFirstUninstallEntryThatSaysWhere()
    {
        SteamFixture pc(dir());
        pc.pc.registry.setText(uninstall + "\\A", "DisplayName", "Steam");
        pc.pc.registry.setText(uninstall + "\\B", "DisplayName", "Steamer");
        pc.pc.registry.setText(uninstall + "\\B", "InstallLocation", "B:\\wrong");
        pc.pc.registry.setText(uninstall + "\\C", "DisplayName", "Steam");
        pc.pc.registry.setText(uninstall + "\\C", "InstallLocation", "C:\\right");
        QCOMPARE(pc.steam().steamInstallPath(), QString("C:\\right"));
    }

    void thenTheFolderInTheUsersHome()
    {
        SteamFixture pc(dir());
        // On this system a backslash is a letter of the file's name.
        QDir().mkpath(QFileInfo(pc.home).path());
        QFile exe(pc.home + "\\Steam\\Steam.exe");
        QVERIFY(exe.open(QIODevice::WriteOnly));
        QCOMPARE(pc.steam().steamInstallPath(), pc.home + "\\Steam");
    }

    void elseThePathIsEmptyAndTheLogSaysSo()
    {
        SteamFixture pc(dir());
        announce("[steam] Could not find Steam installation path");
        QCOMPARE(pc.steam().steamInstallPath(), QString());
    }

    void steamThatRunsAtStartUpCountsAtOnce()
    {
        SteamFixture pc(dir());
        pc.pc.processes.start("steam.exe");
        pc.steam();
        clearLog();
        QVERIFY(pc.steam().hasLaunchSteam());
        QVERIFY(logged().isEmpty());
    }

    void afterOneMissItTakesFourLooks()
    {
        SteamFixture pc(dir());
        pc.pc.processes.start("steam.exe");
        QVERIFY(pc.steam().hasLaunchSteam());
        pc.pc.processes.endAll("steam.exe");
        QVERIFY(!pc.steam().hasLaunchSteam());
        pc.pc.processes.start("steam.exe");
        QVERIFY(!pc.steam().hasLaunchSteam());
        QVERIFY(!pc.steam().hasLaunchSteam());
        QVERIFY(!pc.steam().hasLaunchSteam());
        QVERIFY(pc.steam().hasLaunchSteam());
    }

    void everyLookThatDoesNotCountIsLogged()
    {
        SteamFixture pc(dir());
        pc.writeVrPath(R"({"external_drivers":["C:\\x"]})");
        pc.steam();
        QCOMPARE(logged().last(),
                 QString("[steam] not launch steam,true num:0,ret:false; external_drivers: true"));
        pc.writeVrPath(R"({"external_drivers":null})");
        pc.pc.processes.start("steam.exe");
        pc.steam().hasLaunchSteam();
        QCOMPARE(logged().last(),
                 QString("[steam] lanunched steam,true num:1,ret:false; external_drivers: false"));
    }

    void aProcessOfAnotherLetterCaseIsNotSteam()
    {
        SteamFixture pc(dir());
        pc.pc.processes.start("Steam.exe");
        QVERIFY(!pc.steam().hasLaunchSteam());
    }

    void steamVRCountsAsStoppedAfterTwoMisses()
    {
        SteamFixture pc(dir());
        pc.pc.processes.start("vrmonitor.exe");
        QVERIFY(pc.steam().hasLaunchSteamVR());
        pc.pc.processes.endAll("vrmonitor.exe");
        announce("[steam] hasLaunchSteamVR:false; switch: 1");
        QVERIFY(pc.steam().hasLaunchSteamVR());
        announce("[steam] hasLaunchSteamVR:false; switch: 2");
        QVERIFY(!pc.steam().hasLaunchSteamVR());
        pc.pc.processes.start("vrmonitor.exe");
        QVERIFY(pc.steam().hasLaunchSteamVR());
        pc.pc.processes.endAll("vrmonitor.exe");
        announce("[steam] hasLaunchSteamVR:false; switch: 1");
        QVERIFY(pc.steam().hasLaunchSteamVR());
    }
};

KOLM_TEST_MAIN(TestSteamDiscovery)
#include "tst_steam_discovery.moc"
