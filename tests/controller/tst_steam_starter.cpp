#include "controller/readiness.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

namespace {

SteamOptions steam(bool installed, bool running)
{
    SteamOptions options;
    options.steamInstalled = installed;
    options.steamVrInstalled = installed;
    options.steamRunning = running;
    return options;
}

} // namespace

class TestReadiness : public TestCase
{
    Q_OBJECT

private slots:
    void steamThatRunsBringsSteamVRAtOnce()
    {
        PcFixture pc(dir(), steam(true, true));
        Readiness readiness(pc.clock, pc.steam, "C:/KOLM");
        QSignalSpy states(&readiness, &Readiness::stateChanged);
        readiness.startUp();
        QCOMPARE(pc.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
        QCOMPARE(readiness.state(), Readiness::Pass);
        QCOMPARE(states.size(), 1);
        QCOMPARE(logged().last(), QString("checkSteam end"));
        QVERIFY(pc.pool.empty());
    }

    void steamThatDoesNotRunIsStartedAndWaitedFor()
    {
        PcFixture pc(dir(), steam(true, false));
        Readiness readiness(pc.clock, pc.steam, "C:/KOLM");
        QSignalSpy toasts(&readiness, &Readiness::toast);
        readiness.startUp();
        QCOMPARE(pc.pool.size(), size_t(1));
        pc.pc.processes.start("steam.exe");
        pc.clock.advance(1999);
        QVERIFY(toasts.isEmpty());
        pc.clock.advance(1);
        QCOMPARE(toasts.size(), 1);
        QCOMPARE(toasts[0][0].toString(), QString("steam启动中，请勿操作"));
        QCOMPARE(toasts[0][1].toInt(), 5000);
        // Seen four times: after 7 s and three rounds of 2 s.
        QCOMPARE(pc.clock.slept(), 7000 + 3 * 2000);
        QCOMPARE(pc.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
    }

    void theWaitEndsAfterTwentySevenSeconds()
    {
        PcFixture pc(dir(), steam(true, false));
        Readiness readiness(pc.clock, pc.steam, "C:/KOLM");
        readiness.startUp();
        pc.clock.advance(2000);
        QCOMPARE(pc.clock.slept(), 27000);
        QVERIFY(pc.pc.journal.lines().isEmpty()); // no Steam, no SteamVR
    }

    void withoutSteamTheStateSaysSoUntilSteamRuns()
    {
        PcFixture pc(dir(), steam(false, false));
        Readiness readiness(pc.clock, pc.steam, "C:/KOLM");
        QSignalSpy states(&readiness, &Readiness::stateChanged);
        QSignalSpy running(&readiness, &Readiness::steamRunningChanged);
        readiness.startUp();
        QCOMPARE(readiness.state(), Readiness::NoneSteam);
        QVERIFY(states.isEmpty()); // it was the state from the beginning

        pc.pc.processes.start("steam.exe");
        for (int i = 0; i < 4; ++i)
            readiness.lookForSteam();
        QCOMPARE(running.size(), 1);
        QCOMPARE(readiness.state(), Readiness::Pass);
        pc.pc.processes.endAll("steam.exe");
        readiness.lookForSteam();
        QCOMPARE(running.size(), 2);
        QCOMPARE(readiness.state(), Readiness::NoneSteam);
        QCOMPARE(states.size(), 2);
    }

    void withSteamInstalledItsStateDoesNotFollowItsRunning()
    {
        PcFixture pc(dir(), steam(true, true));
        Readiness readiness(pc.clock, pc.steam, "C:/KOLM");
        readiness.startUp();
        QSignalSpy states(&readiness, &Readiness::stateChanged);
        readiness.lookForSteam();
        QVERIFY(readiness.steamRunning());
        pc.pc.processes.endAll("steam.exe");
        readiness.lookForSteam();
        QVERIFY(!readiness.steamRunning());
        QVERIFY(states.isEmpty());
    }

    void theFirstLookComesAfterASecond()
    {
        PcFixture pc(dir(), steam(true, true));
        Readiness readiness(pc.clock, pc.steam, "C:/KOLM");
        QSignalSpy running(&readiness, &Readiness::steamRunningChanged);
        readiness.planLooks();
        pc.clock.advance(999);
        QVERIFY(running.isEmpty());
        pc.clock.advance(1);
        QCOMPARE(running.size(), 1);
    }

    void aSystemFolderGetsAnAdvice_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<bool>("advice");
        QTest::newRow("programs") << "C:/Program Files/KOLM" << true;
        QTest::newRow("32-bit programs") << "C:/Program Files (x86)/KOLM" << true;
        QTest::newRow("windows") << "C:/Windows/x" << true;
        QTest::newRow("other letter case") << "C:/program files/KOLM" << false;
        QTest::newRow("other drive") << "D:/Program Files/KOLM" << false;
        QTest::newRow("own folder") << "C:/KOLM" << false;
    }
    void aSystemFolderGetsAnAdvice()
    {
        QFETCH(QString, folder);
        QFETCH(bool, advice);
        PcFixture pc(dir(), steam(true, true));
        Readiness readiness(pc.clock, pc.steam, folder);
        QSignalSpy toasts(&readiness, &Readiness::toast);
        readiness.planLooks();
        pc.clock.advance(3999);
        QVERIFY(toasts.isEmpty());
        pc.clock.advance(1);
        QCOMPARE(toasts.size(), advice ? 1 : 0);
        if (advice) {
            QCOMPARE(toasts[0][0].toString(),
                     QString("请使用管理员权限打开steam，或安装此程序到非系统目录"));
            QCOMPARE(toasts[0][1].toInt(), 2000);
        }
    }

    void steamVRsStateIsAnnouncedWhenItChanges()
    {
        PcFixture pc(dir(), steam(true, true));
        Readiness readiness(pc.clock, pc.steam, "C:/KOLM");
        QSignalSpy changes(&readiness, &Readiness::steamVRRunningChanged);
        pc.pc.processes.start("vrmonitor.exe");
        readiness.lookForSteamVR();
        readiness.lookForSteamVR();
        QCOMPARE(changes.size(), 1);
        QVERIFY(readiness.steamVRRunning());
    }

    void launchingSteamToastsStartsAndAnnounces()
    {
        PcFixture pc(dir(), steam(true, false));
        Readiness readiness(pc.clock, pc.steam, "C:/KOLM");
        QSignalSpy toasts(&readiness, &Readiness::toast);
        QSignalSpy running(&readiness, &Readiness::steamRunningChanged);
        readiness.launch(false);
        QCOMPARE(toasts[0][0].toString(), QString("正在登录steam，请稍等"));
        QCOMPARE(toasts[0][1].toInt(), 15000);
        QCOMPARE(pc.pool.size(), size_t(1));
        QCOMPARE(running.size(), 1);
    }

    void launchingSteamVRCountsItAsRunning()
    {
        PcFixture pc(dir(), steam(true, true));
        Readiness readiness(pc.clock, pc.steam, "C:/KOLM");
        QSignalSpy toasts(&readiness, &Readiness::toast);
        QSignalSpy running(&readiness, &Readiness::steamVRRunningChanged);
        readiness.launch(true);
        QCOMPARE(pc.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
        QVERIFY(readiness.steamVRRunning());
        QCOMPARE(running.size(), 1);
        QCOMPARE(toasts[0][0].toString(), QString("正在准备打开或者安装SteamVR,确保已登录steam"));
        QCOMPARE(toasts[0][1].toInt(), 2000);
    }
};

KOLM_TEST_MAIN(TestReadiness)
#include "tst_readiness.moc"
