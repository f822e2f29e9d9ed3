#include "controller/link_mode.h"
#include "tests/controller/controller_test.h"
#include "tests/controller/parts_fixture.h"

namespace {

struct Mode : PartsFixture
{
    explicit Mode(const QString &folder) : PartsFixture(folder)
    {
        QObject::connect(&mode, &LinkMode::wiredChanged, [this] { said << "wiredChanged"; });
        QObject::connect(&usb, &UsbHeadset::attached, [this] { said << "attached"; });
        QObject::connect(&mode, &LinkMode::toast, [this](const QString &text, int duration) {
            said << QStringLiteral("toast(%1,%2)").arg(text).arg(duration);
            if (pc.processes.isRunning("vrserver.exe"))
                said << "SteamVR still runs";
            if (lock.tryLock()) {
                lock.unlock();
                said << "not locked yet";
            }
        });
    }

    LinkMode mode{
        {clock, config, settings, flow, usb, [this](const SettingsChoice &choice, LinkKind kind) {
             said << "startRun";
             settings.apply(choice, kind);
         }}};
};

} // namespace

class TestLinkMode : public ControllerTest
{
    Q_OBJECT

    // Bit rates that no definition has.
    void storeBitRates() const
    {
        writeFile(
            "set.json",
            R"({"lastSn":"D3A","D3":{"definitionIndex":1,"bitRate":"61","bitRate_wired":"62"}})");
    }
    QJsonObject stored() const { return storedSettings("D3"); }

private slots:
    void theFirstWirelessChoiceStartsUpAndChangesNothingElse()
    {
        Mode m(dir());
        clearLog();
        m.mode.choose(LinkKind::Wireless);
        QCOMPARE(m.said, QStringList{"startRun"});
        QCOMPARE(m.config.wiredOrWireless(), 2);
        QVERIFY(m.mode.kind() == LinkKind::Wireless);
        QVERIFY(!readFile("set.json").isEmpty()); // the settings were applied
        const QStringList log = logged();
        QCOMPARE(log.first(), QString("setwired "));
        QVERIFY(log.indexOf("setwired m_timeId") > 0);
        QVERIFY(log.indexOf("setWiredOrWireless start: false") >
                log.indexOf("no session json: ./session.json"));
        QCOMPARE(log.last(), QString("setwired end"));
    }

    void theFirstWiredChoiceListensToAdbBeforeTheStart()
    {
        Mode m(dir());
        m.mode.choose(LinkKind::Wired);
        // adb is listened to, and asked to look.
        QCOMPARE(m.said, QStringList({"adb", "startRun", "wiredChanged", "adb"}));
        QCOMPARE(m.config.wiredOrWireless(), 1);
        QVERIFY(m.mode.kind() == LinkKind::Wired);
    }

    void aSecondChoiceWithinFourSecondsIsRefused()
    {
        Mode m(dir());
        m.mode.choose(LinkKind::Wireless);
        m.said.clear();
        m.clock.advance(3999);
        m.mode.choose(LinkKind::Wired);
        QCOMPARE(m.said, QStringList({"toast(切换模式中，请稍后再试,2000)", "not locked yet"}));
        QVERIFY(m.mode.kind() == LinkKind::Wireless);
        QCOMPARE(m.config.wiredOrWireless(), 2);
        m.clock.advance(1);
        m.mode.choose(LinkKind::Wired);
        QVERIFY(m.mode.kind() == LinkKind::Wired);
    }

    void aSwitchRestartsSteamVRAroundTheSession()
    {
        Mode m(dir());
        writeFile("session.json", R"({"sessionSettings":{"video":{"preferredFps":60}}})");
        m.mode.choose(LinkKind::Wireless);
        m.clock.advance(4000);
        m.said.clear();
        m.pc.journal.clear();
        m.pc.processes.start("vrserver.exe");
        m.pc.timeline.after(1500, [&] { m.pc.processes.endAll("vrserver.exe"); });
        const qint64 slept = m.clock.slept();
        m.mode.choose(LinkKind::Wired);
        QCOMPARE(m.said, QStringList({"adb", "toast(正在重启，请稍候,13000)", "SteamVR still runs",
                                      "not locked yet", "wiredChanged", "adb"}));
        QVERIFY(m.pc.journal.lines().first().contains("vrstartup.exe -shutdown"));
        QVERIFY(!m.pc.processes.isRunning("vrserver.exe"));
        QVERIFY(m.clock.slept() - slept >= 1500 + 2500 + 500);
        QVERIFY(m.lock.tryLock()); // let go again
        m.lock.unlock();
        m.pc.journal.clear();
        m.clock.advance(9999);
        QVERIFY(m.pc.journal.lines().isEmpty());
        m.clock.advance(1);
        QCOMPARE(m.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
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
            m.mode.choose(linkKind(wired)); // the first choice
        }
        QCOMPARE(stored().value("bitRate").toString(), QString(wired ? "61" : "50"));
        QCOMPARE(stored().value("bitRate_wired").toString(), QString(wired ? "50" : "62"));

        Mode m(dir());
        m.mode.choose(linkKind(!wired));
        m.clock.advance(20000);
        m.config.setBitRate(61, false, 3);
        m.config.setBitRate(62, true, 3);
        m.mode.choose(linkKind(wired)); // a switch
        QCOMPARE(stored().value("bitRate").toString(), QString(wired ? "61" : "50"));
        QCOMPARE(stored().value("bitRate_wired").toString(), QString(wired ? "50" : "62"));
    }

    void theSwitchIsLockedFromTheStopToTheFiles()
    {
        Mode m(dir());
        writeFile("session.json", R"({"sessionSettings":{"video":{"preferredFps":60}}})");
        m.mode.choose(LinkKind::Wireless);
        m.clock.advance(4000);
        m.pc.processes.start("vrserver.exe");
        writeFile("session.json", "{}");
        QStringList stops;
        m.pc.journal.onLine([&](const QString &line) {
            if (!line.contains("-shutdown"))
                return;
            stops << line;
            QVERIFY(!m.lock.tryLock());
            QCOMPARE(readFile("session.json"), QByteArray("{}"));
            QCOMPARE(m.config.wiredOrWireless(), 2);
        });
        m.mode.choose(LinkKind::Wired);
        QCOMPARE(stops.size(), 1);
        QVERIFY(readFile("session.json") != QByteArray("{}"));
        QVERIFY(m.lock.tryLock());
        m.lock.unlock();
    }

    void theSameModeAgainStoresItAndLocksButRestartsNothing()
    {
        Mode m(dir());
        m.mode.choose(LinkKind::Wireless);
        m.clock.advance(4000);
        m.said.clear();
        m.pc.journal.clear();
        m.config.setWiredOrWireless(0);
        m.mode.choose(LinkKind::Wireless);
        QVERIFY(m.said.isEmpty());
        QVERIFY(m.pc.journal.lines().isEmpty());
        QCOMPARE(m.config.wiredOrWireless(), 2);
        m.clock.advance(3999);
        m.mode.choose(LinkKind::Wireless);
        QVERIFY(!m.said.isEmpty()); // still switching: a toast
    }

    void adbIsListenedToOncePerRun()
    {
        Mode m(dir());
        for (const LinkKind kind :
             {LinkKind::Wired, LinkKind::Wireless, LinkKind::Wired, LinkKind::Wireless}) {
            m.mode.choose(kind);
            m.clock.advance(20000);
        }
        QCOMPARE(m.said.count("startRun"), 1);
        QCOMPARE(m.said.count("adb"), 1 + 4); // and once with each change
        emit m.adb.deviceConnect(true, "D3USB");
        QCOMPARE(m.said.count("attached"), 1);
    }

    void whatAChangeDoesToTheHeadsetsComesLast()
    {
        Mode m(dir());
        m.adb.take("Android Debug Bridge version 1.0.41\r\n");
        m.adbLines.clear();
        m.mode.choose(LinkKind::Wired);
        m.clock.advance(4000);
        QCOMPARE(m.adbLines, QStringList{"adb devices && adb forward --list"});

        m.flow.usbAttached("D3USB");
        m.pc.processes.start("adb.exe");
        QStringList seen; // by a page that hears of the change
        connect(&m.mode, &LinkMode::wiredChanged, [&] {
            seen << m.flow.connectedSerial()
                 << (m.pc.processes.isRunning("adb.exe") ? "runs" : "ended");
        });
        m.mode.choose(LinkKind::Wireless);
        QCOMPARE(seen, QStringList({"D3USB", "runs"}));
        QCOMPARE(m.flow.connectedSerial(), QString());
        QVERIFY(!m.pc.processes.isRunning("adb.exe"));
    }
};

KOLM_TEST_MAIN(TestLinkMode)
#include "tst_link_mode.moc"
