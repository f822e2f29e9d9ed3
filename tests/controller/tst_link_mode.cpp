#include "controller/link_mode.h"
#include "controller/streaming_settings.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMutex>
#include <QSignalSpy>

namespace {

struct Mode
{
    explicit Mode(const QString &dir) : pc(dir, steamRunning())
    {
        pc.config.loadDeviceSettings(false, 0);
        QObject::connect(&mode, &LinkMode::wiredChanged, [this] { done << "wiredChanged"; });
        QObject::connect(&mode, &LinkMode::toast, [this](const QString &text, int duration) {
            done << QStringLiteral("toast(%1,%2)").arg(text).arg(duration);
            if (pc.pc.isRunning("vrserver.exe"))
                done << "SteamVR still runs";
            if (lock.tryLock()) {
                lock.unlock();
                done << "not locked yet";
            }
        });
    }

    static SteamOptions steamRunning()
    {
        SteamOptions options;
        options.steamRunning = true;
        return options;
    }

    PcFixture pc;
    QMutex lock;
    StreamingSettings settings{pc.clock, pc.config, pc.steam, lock};
    QStringList done;
    LinkMode mode{pc.clock,
                  pc.config,
                  settings,
                  {[this] { done << "hookAdb"; }, [this] { done << "startUp"; },
                   [this] { done << "enterWired"; }, [this] { done << "enterWireless"; }}};
};

} // namespace

class TestLinkMode : public TestCase
{
    Q_OBJECT

    // Bit rates that no definition has.
    void storeBitRates() const
    {
        writeFile(
            "set.json",
            R"({"lastSn":"D3A","D3":{"definitionIndex":1,"bitRate":"61","bitRate_wired":"62"}})");
    }
    QJsonObject stored() const
    {
        return QJsonDocument::fromJson(readFile("set.json")).object().value("D3").toObject();
    }

private slots:
    void theFirstWirelessChoiceStartsUpAndChangesNothingElse()
    {
        Mode m(dir());
        clearLog();
        m.mode.choose(false);
        QCOMPARE(m.done, QStringList{"startUp"});
        QCOMPARE(m.pc.config.wiredOrWireless(), 2);
        QVERIFY(!m.mode.wired());
        QVERIFY(!readFile("set.json").isEmpty()); // the settings were applied
        const QStringList log = logged();
        QCOMPARE(log.first(), QString("setwired "));
        QVERIFY(log.indexOf("setwired m_timeId") > 0);
        QVERIFY(log.indexOf("setWiredOrWireless start: false") >
                log.indexOf("no session json: ./session.json"));
        QCOMPARE(log.last(), QString("setwired end"));
    }

    void theFirstWiredChoiceHooksAdbBeforeTheStartUp()
    {
        Mode m(dir());
        m.mode.choose(true);
        QCOMPARE(m.done, QStringList({"hookAdb", "startUp", "wiredChanged", "enterWired"}));
        QCOMPARE(m.pc.config.wiredOrWireless(), 1);
        QVERIFY(m.mode.wired());
    }

    void aSecondChoiceWithinFourSecondsIsRefused()
    {
        Mode m(dir());
        m.mode.choose(false);
        m.done.clear();
        m.pc.clock.advance(3999);
        m.mode.choose(true);
        QCOMPARE(m.done, QStringList({"toast(切换模式中，请稍后再试,2000)", "not locked yet"}));
        QVERIFY(!m.mode.wired());
        QCOMPARE(m.pc.config.wiredOrWireless(), 2);
        m.pc.clock.advance(1);
        m.mode.choose(true);
        QVERIFY(m.mode.wired());
    }

    void aSwitchRestartsSteamVRAroundTheSession()
    {
        Mode m(dir());
        writeFile("session.json", R"({"sessionSettings":{"video":{"preferredFps":60}}})");
        m.mode.choose(false);
        m.pc.clock.advance(4000);
        m.done.clear();
        m.pc.pc.journal.clear();
        m.pc.pc.startProcess("vrserver.exe");
        m.pc.pc.timeline.after(1500, [&] { m.pc.pc.endProcesses("vrserver.exe"); });
        const qint64 slept = m.pc.clock.slept();
        m.mode.choose(true);
        QCOMPARE(m.done,
                 QStringList({"hookAdb", "toast(正在重启，请稍候,13000)", "SteamVR still runs",
                              "not locked yet", "wiredChanged", "enterWired"}));
        QVERIFY(m.pc.pc.journal.lines().first().contains("vrstartup.exe -shutdown"));
        QVERIFY(!m.pc.pc.isRunning("vrserver.exe"));
        QVERIFY(m.pc.clock.slept() - slept >= 1500 + 2500 + 500);
        QVERIFY(m.lock.tryLock()); // let go again
        m.lock.unlock();
        m.pc.pc.journal.clear();
        m.pc.clock.advance(9999);
        QVERIFY(m.pc.pc.journal.lines().isEmpty());
        m.pc.clock.advance(1);
        QCOMPARE(m.pc.pc.journal.lines().last(),
                 QString("launch explorer steam://rungameid/250820"));
    }

    void theBitRateOfTheNewLinkIsWritten_data()
    {
        QTest::addColumn<bool>("wired");
        QTest::newRow("wired") << true;
        QTest::newRow("wireless") << false;
    }
    void theBitRateOfTheNewLinkIsWritten()
    {
        QFETCH(bool, wired);
        storeBitRates();
        {
            Mode m(dir());
            m.mode.choose(wired); // the first choice
        }
        QCOMPARE(stored().value("bitRate").toString(), QString(wired ? "61" : "50"));
        QCOMPARE(stored().value("bitRate_wired").toString(), QString(wired ? "50" : "62"));

        Mode m(dir());
        m.mode.choose(!wired);
        m.pc.clock.advance(20000);
        m.pc.config.setBitRate(61, false, 3);
        m.pc.config.setBitRate(62, true, 3);
        m.mode.choose(wired); // a switch
        QCOMPARE(stored().value("bitRate").toString(), QString(wired ? "61" : "50"));
        QCOMPARE(stored().value("bitRate_wired").toString(), QString(wired ? "50" : "62"));
    }

    void theSwitchIsLockedFromTheStopToTheFiles()
    {
        Mode m(dir());
        writeFile("session.json", R"({"sessionSettings":{"video":{"preferredFps":60}}})");
        m.mode.choose(false);
        m.pc.clock.advance(4000);
        m.pc.pc.startProcess("vrserver.exe");
        writeFile("session.json", "{}");
        QStringList stops;
        m.pc.pc.journal.onLine([&](const QString &line) {
            if (!line.contains("-shutdown"))
                return;
            stops << line;
            QVERIFY(!m.lock.tryLock());
            QCOMPARE(readFile("session.json"), QByteArray("{}"));
            QCOMPARE(m.pc.config.wiredOrWireless(), 2);
        });
        m.mode.choose(true);
        QCOMPARE(stops.size(), 1);
        QVERIFY(readFile("session.json") != QByteArray("{}"));
        QVERIFY(m.lock.tryLock());
        m.lock.unlock();
    }

    void theSameModeAgainStoresItAndLocksButRestartsNothing()
    {
        Mode m(dir());
        m.mode.choose(false);
        m.pc.clock.advance(4000);
        m.done.clear();
        m.pc.pc.journal.clear();
        m.pc.config.setWiredOrWireless(0);
        m.mode.choose(false);
        QVERIFY(m.done.isEmpty());
        QVERIFY(m.pc.pc.journal.lines().isEmpty());
        QCOMPARE(m.pc.config.wiredOrWireless(), 2);
        m.pc.clock.advance(3999);
        m.mode.choose(false);
        QVERIFY(!m.done.isEmpty()); // still switching: a toast
    }

    void adbIsHookedOncePerRun()
    {
        Mode m(dir());
        for (const bool wired : {true, false, true, false}) {
            m.mode.choose(wired);
            m.pc.clock.advance(20000);
        }
        QCOMPARE(m.done.count("hookAdb"), 1);
        QCOMPARE(m.done.count("startUp"), 1);
        QCOMPARE(m.done.count("enterWired"), 2);
        QCOMPARE(m.done.count("enterWireless"), 2);
    }
};

KOLM_TEST_MAIN(TestLinkMode)
#include "tst_link_mode.moc"
