#include "controller/steam_starter.h"

#include "checks/steam_watch.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

namespace {

struct Starting
{
    explicit Starting(PcFixture &pc, const QString &applicationDir = "C:/KOLM")
        : watch(pc.steam), starter({pc.clock, pc.steam, watch}, applicationDir)
    {
    }

    SteamWatch watch;
    SteamStarter starter;
};

} // namespace

class TestSteamStarter : public TestCase
{
    Q_OBJECT

private slots:
    void steamThatRunsBringsSteamVRAtOnce()
    {
        PcFixture pc(dir(), steamThatIs(true, true));
        Starting s(pc);
        QSignalSpy states(&s.watch, &SteamWatch::stateChanged);
        s.starter.startUp();
        QCOMPARE(pc.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
        QCOMPARE(s.watch.state(), SteamWatch::Pass);
        QCOMPARE(states.size(), 1);
        QCOMPARE(logged().last(), QString("checkSteam end"));
        QVERIFY(pc.pool.empty());
    }

    void steamThatDoesNotRunIsStartedAndWaitedFor()
    {
        PcFixture pc(dir(), steamThatIs(true, false));
        Starting s(pc);
        QSignalSpy toasts(&s.starter, &SteamStarter::toast);
        s.starter.startUp();
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
        PcFixture pc(dir(), steamThatIs(true, false));
        Starting s(pc);
        s.starter.startUp();
        pc.clock.advance(2000);
        QCOMPARE(pc.clock.slept(), 27000);
        QVERIFY(pc.pc.journal.lines().isEmpty()); // no Steam, no SteamVR
    }

    void theFirstLookComesAfterASecond()
    {
        PcFixture pc(dir(), steamThatIs(true, true));
        Starting s(pc);
        QSignalSpy running(&s.watch, &SteamWatch::steamRunningChanged);
        s.starter.scheduleFollowUps();
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
        PcFixture pc(dir(), steamThatIs(true, true));
        Starting s(pc, folder);
        QSignalSpy toasts(&s.starter, &SteamStarter::toast);
        s.starter.scheduleFollowUps();
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

    void launchingSteamToastsStartsAndAnnounces()
    {
        PcFixture pc(dir(), steamThatIs(true, false));
        Starting s(pc);
        QSignalSpy toasts(&s.starter, &SteamStarter::toast);
        QSignalSpy running(&s.watch, &SteamWatch::steamRunningChanged);
        s.starter.launch(false);
        QCOMPARE(toasts[0][0].toString(), QString("正在登录steam，请稍等"));
        QCOMPARE(toasts[0][1].toInt(), 15000);
        QCOMPARE(pc.pool.size(), size_t(1));
        QCOMPARE(running.size(), 1);
    }

    void launchingSteamVRCountsItAsRunning()
    {
        PcFixture pc(dir(), steamThatIs(true, true));
        Starting s(pc);
        QSignalSpy toasts(&s.starter, &SteamStarter::toast);
        QSignalSpy running(&s.watch, &SteamWatch::steamVRRunningChanged);
        s.starter.launch(true);
        QCOMPARE(pc.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
        QVERIFY(s.watch.steamVRRunning());
        QCOMPARE(running.size(), 1);
        QCOMPARE(toasts[0][0].toString(), QString("正在准备打开或者安装SteamVR,确保已登录steam"));
        QCOMPARE(toasts[0][1].toInt(), 2000);
    }
};

KOLM_TEST_MAIN(TestSteamStarter)
#include "tst_steam_starter.moc"
