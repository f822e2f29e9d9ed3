#include "controller/steam_starter.h"

#include "checks/steam_watch.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QSignalSpy>

namespace {

struct Starting : PcFixture
{
    Starting(const QString &folder, const SteamOptions &options,
             const QString &applicationDir = "C:/KOLM")
        : PcFixture(folder, options), starter({clock, steam, watch}, applicationDir)
    {
    }

    SteamWatch watch{steam};
    SteamStarter starter;
};

} // namespace

class TestSteamStarter : public TestCase
{
    Q_OBJECT

private slots:
    void steamThatRunsBringsSteamVRAtOnce()
    {
        Starting s(dir(), steamThatIs(true, true));
        QSignalSpy states(&s.watch, &SteamWatch::stateChanged);
        s.starter.startUp();
        QCOMPARE(s.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
        QCOMPARE(s.watch.state(), SteamWatch::Pass);
        QCOMPARE(states.size(), 1);
        QCOMPARE(logged().last(), QString("checkSteam end"));
        QVERIFY(s.pool.empty());
    }

    void steamThatDoesNotRunIsStartedAndWaitedFor()
    {
        Starting s(dir(), steamThatIs(true, false));
        QSignalSpy toasts(&s.starter, &SteamStarter::toast);
        s.starter.startUp();
        QCOMPARE(s.pool.size(), size_t(1));
        s.pc.processes.start("steam.exe");
        s.clock.advance(1999);
        QVERIFY(toasts.isEmpty());
        s.clock.advance(1);
        QCOMPARE(toasts.size(), 1);
        QCOMPARE(toasts[0][0].toString(), QString("steam启动中，请勿操作"));
        QCOMPARE(toasts[0][1].toInt(), 5000);
        // Seen four times: after 7 s and three rounds of 2 s.
        QCOMPARE(s.clock.slept(), 7000 + 3 * 2000);
        QCOMPARE(s.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
    }

    void theWaitEndsAfterTwentySevenSeconds()
    {
        Starting s(dir(), steamThatIs(true, false));
        s.starter.startUp();
        s.clock.advance(2000);
        QCOMPARE(s.clock.slept(), 27000);
        QVERIFY(s.pc.journal.lines().isEmpty()); // no Steam, no SteamVR
    }

    void theFirstLookComesAfterASecond()
    {
        Starting s(dir(), steamThatIs(true, true));
        QSignalSpy running(&s.watch, &SteamWatch::steamRunningChanged);
        s.starter.scheduleFollowUps();
        s.clock.advance(999);
        QVERIFY(running.isEmpty());
        s.clock.advance(1);
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
        Starting s(dir(), steamThatIs(true, true), folder);
        QSignalSpy toasts(&s.starter, &SteamStarter::toast);
        s.starter.scheduleFollowUps();
        s.clock.advance(3999);
        QVERIFY(toasts.isEmpty());
        s.clock.advance(1);
        QCOMPARE(toasts.size(), advice ? 1 : 0);
        if (advice) {
            QCOMPARE(toasts[0][0].toString(),
                     QString("请使用管理员权限打开steam，或安装此程序到非系统目录"));
            QCOMPARE(toasts[0][1].toInt(), 2000);
        }
    }

    void launchingSteamToastsStartsAndAnnounces()
    {
        Starting s(dir(), steamThatIs(true, false));
        QSignalSpy toasts(&s.starter, &SteamStarter::toast);
        QSignalSpy running(&s.watch, &SteamWatch::steamRunningChanged);
        s.starter.launch(false);
        QCOMPARE(toasts[0][0].toString(), QString("正在登录steam，请稍等"));
        QCOMPARE(toasts[0][1].toInt(), 15000);
        QCOMPARE(s.pool.size(), size_t(1));
        QCOMPARE(running.size(), 1);
    }

    void launchingSteamVRCountsItAsRunning()
    {
        Starting s(dir(), steamThatIs(true, true));
        QSignalSpy toasts(&s.starter, &SteamStarter::toast);
        QSignalSpy running(&s.watch, &SteamWatch::steamVRRunningChanged);
        s.starter.launch(true);
        QCOMPARE(s.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
        QVERIFY(s.watch.steamVRRunning());
        QCOMPARE(running.size(), 1);
        QCOMPARE(toasts[0][0].toString(), QString("正在准备打开或者安装SteamVR,确保已登录steam"));
        QCOMPARE(toasts[0][1].toInt(), 2000);
    }
};

KOLM_TEST_MAIN(TestSteamStarter)
#include "tst_steam_starter.moc"
