#include "base/mutex.h"
#include "controller/connection_flow.h"
#include "controller/link_mode.h"
#include "controller/streaming_settings.h"
#include "controller/usb_headset.h"
#include "controller/vr_list_model.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>

namespace {

struct Mode
{
    explicit Mode(const QString &dir) : pc(dir, steamRunning())
    {
        pc.config.loadDeviceSettings(false, 0);
        QObject::connect(&mode, &LinkMode::wiredChanged, [this] { done << "wiredChanged"; });
        QObject::connect(&usb, &UsbHeadset::attached, [this] { done << "attached"; });
        QObject::connect(&mode, &LinkMode::toast, [this](const QString &text, int duration) {
            done << QStringLiteral("toast(%1,%2)").arg(text).arg(duration);
            if (pc.pc.processes.isRunning("vrserver.exe"))
                done << "SteamVR still runs";
            if (lock.tryLock()) {
                lock.unlock();
                done << "not locked yet";
            }
        });
    }

    PcFixture pc;
    Mutex lock;
    StreamingSettings settings{pc.clock, pc.config, pc.steam, lock};
    VRListModel model;
    ConnectionFlow flow{pc.clock, pc.config, pc.system, model};
    QStringList done;
    UsbHeadset usb{[this]() -> AdbManger & {
        done << "adb";
        return pc.adb;
    }};
    LinkMode mode{{pc.clock, pc.config, settings, flow, usb,
                   [this](const SettingsChoice &choice, LinkKind kind) {
                       done << "startRun";
                       settings.apply(choice, kind);
                   }}};
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
        m.mode.choose(LinkKind::Wireless);
        QCOMPARE(m.done, QStringList{"startRun"});
        QCOMPARE(m.pc.config.wiredOrWireless(), 2);
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
        QCOMPARE(m.done, QStringList({"adb", "startRun", "wiredChanged", "adb"}));
        QCOMPARE(m.pc.config.wiredOrWireless(), 1);
        QVERIFY(m.mode.kind() == LinkKind::Wired);
    }

    void aSecondChoiceWithinFourSecondsIsRefused()
    {
        Mode m(dir());
        m.mode.choose(LinkKind::Wireless);
        m.done.clear();
        m.pc.clock.advance(3999);
        m.mode.choose(LinkKind::Wired);
        QCOMPARE(m.done, QStringList({"toast(切换模式中，请稍后再试,2000)", "not locked yet"}));
        QVERIFY(m.mode.kind() == LinkKind::Wireless);
        QCOMPARE(m.pc.config.wiredOrWireless(), 2);
        m.pc.clock.advance(1);
        m.mode.choose(LinkKind::Wired);
        QVERIFY(m.mode.kind() == LinkKind::Wired);
    }

    void aSwitchRestartsSteamVRAroundTheSession()
    {
        Mode m(dir());
        writeFile("session.json", R"({"sessionSettings":{"video":{"preferredFps":60}}})");
        m.mode.choose(LinkKind::Wireless);
        m.pc.clock.advance(4000);
        m.done.clear();
        m.pc.pc.journal.clear();
        m.pc.pc.processes.start("vrserver.exe");
        m.pc.pc.timeline.after(1500, [&] { m.pc.pc.processes.endAll("vrserver.exe"); });
        const qint64 slept = m.pc.clock.slept();
        m.mode.choose(LinkKind::Wired);
        QCOMPARE(m.done, QStringList({"adb", "toast(正在重启，请稍候,13000)", "SteamVR still runs",
                                      "not locked yet", "wiredChanged", "adb"}));
        QVERIFY(m.pc.pc.journal.lines().first().contains("vrstartup.exe -shutdown"));
        QVERIFY(!m.pc.pc.processes.isRunning("vrserver.exe"));
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
            m.mode.choose(linkKind(wired)); // the first choice
        }
        QCOMPARE(stored().value("bitRate").toString(), QString(wired ? "61" : "50"));
        QCOMPARE(stored().value("bitRate_wired").toString(), QString(wired ? "50" : "62"));

        Mode m(dir());
        m.mode.choose(linkKind(!wired));
        m.pc.clock.advance(20000);
        m.pc.config.setBitRate(61, false, 3);
        m.pc.config.setBitRate(62, true, 3);
        m.mode.choose(linkKind(wired)); // a switch
        QCOMPARE(stored().value("bitRate").toString(), QString(wired ? "61" : "50"));
        QCOMPARE(stored().value("bitRate_wired").toString(), QString(wired ? "50" : "62"));
    }

    void theSwitchIsLockedFromTheStopToTheFiles()
    {
        Mode m(dir());
        writeFile("session.json", R"({"sessionSettings":{"video":{"preferredFps":60}}})");
        m.mode.choose(LinkKind::Wireless);
        m.pc.clock.advance(4000);
        m.pc.pc.processes.start("vrserver.exe");
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
        m.pc.clock.advance(4000);
        m.done.clear();
        m.pc.pc.journal.clear();
        m.pc.config.setWiredOrWireless(0);
        m.mode.choose(LinkKind::Wireless);
        QVERIFY(m.done.isEmpty());
        QVERIFY(m.pc.pc.journal.lines().isEmpty());
        QCOMPARE(m.pc.config.wiredOrWireless(), 2);
        m.pc.clock.advance(3999);
        m.mode.choose(LinkKind::Wireless);
        QVERIFY(!m.done.isEmpty()); // still switching: a toast
    }

    void adbIsListenedToOncePerRun()
    {
        Mode m(dir());
        for (const LinkKind kind :
             {LinkKind::Wired, LinkKind::Wireless, LinkKind::Wired, LinkKind::Wireless}) {
            m.mode.choose(kind);
            m.pc.clock.advance(20000);
        }
        QCOMPARE(m.done.count("startRun"), 1);
        QCOMPARE(m.done.count("adb"), 1 + 4); // and once with each change
        emit m.pc.adb.deviceConnect(true, "D3USB");
        QCOMPARE(m.done.count("attached"), 1);
    }

    void whatAChangeDoesToTheHeadsetsComesLast()
    {
        Mode m(dir());
        m.pc.adb.take("Android Debug Bridge version 1.0.41\r\n");
        m.pc.adbLines.clear();
        m.mode.choose(LinkKind::Wired);
        m.pc.clock.advance(4000);
        QCOMPARE(m.pc.adbLines, QStringList{"adb devices && adb forward --list"});

        m.flow.usbAttached("D3USB");
        m.pc.pc.processes.start("adb.exe");
        QStringList seen; // by a page that hears of the change
        connect(&m.mode, &LinkMode::wiredChanged, [&] {
            seen << m.flow.connectedSerial()
                 << (m.pc.pc.processes.isRunning("adb.exe") ? "runs" : "ended");
        });
        m.mode.choose(LinkKind::Wireless);
        QCOMPARE(seen, QStringList({"D3USB", "runs"}));
        QCOMPARE(m.flow.connectedSerial(), QString());
        QVERIFY(!m.pc.pc.processes.isRunning("adb.exe"));
    }
};

KOLM_TEST_MAIN(TestLinkMode)
#include "tst_link_mode.moc"
