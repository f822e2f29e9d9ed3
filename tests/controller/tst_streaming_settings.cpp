#include "base/mutex.h"
#include "controller/streaming_settings.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QJsonDocument>
#include <QSignalSpy>

namespace {

struct Settings
{
    explicit Settings(const QString &dir) : pc(dir, steamRunning())
    {
        pc.config.loadDeviceSettings(false, 0);
    }

    PcFixture pc;
    Mutex lock;
    StreamingSettings settings{pc.clock, pc.config, pc.steam, lock};
};

} // namespace

class TestStreamingSettings : public TestCase
{
    Q_OBJECT

    QJsonObject stored(const QString &model) const
    {
        return QJsonDocument::fromJson(readFile("set.json")).object().value(model).toObject();
    }

private slots:
    void effectsAreStoredAndSteamVRStartsTenSecondsLater()
    {
        Settings s(dir());
        QSignalSpy toasts(&s.settings, &StreamingSettings::toast);
        s.settings.setEffects({2, 0, 0, true, false, true, true}, LinkKind::Wireless, "D2X");
        QCOMPARE(toasts.size(), 1);
        QCOMPARE(toasts[0][0].toString(), QString("steamVR重启设置中，请勿操作"));
        QCOMPARE(toasts[0][1].toInt(), 15000);
        const QJsonObject d2 = stored("D2");
        QCOMPARE(d2.value("definitionIndex").toInt(), 2);
        QCOMPARE(d2.value("fps").toString(), QString("72"));
        QCOMPARE(d2.value("codec").toString(), QString("H264"));
        QCOMPARE(d2.value("bitRate").toString(), QString("100"));
        QCOMPARE(d2.value("audio").toBool(), true);
        QCOMPARE(d2.value("fullrange").toBool(), true);
        QCOMPARE(d2.value("hdr").toBool(), true);
        // SteamVR did not run: nothing to stop, but it is started all the same.
        QVERIFY(s.pc.pc.journal.lines().isEmpty());
        QCOMPARE(s.pc.clock.slept(), 500);
        s.pc.clock.advance(9999);
        QVERIFY(s.pc.pc.journal.lines().isEmpty());
        s.pc.clock.advance(1);
        QCOMPARE(s.pc.pc.journal.lines().last(),
                 QString("launch explorer steam://rungameid/250820"));
    }

    void theToastComesBeforeTheStop()
    {
        Settings s(dir());
        s.pc.pc.processes.start("vrserver.exe");
        bool running = false;
        connect(&s.settings, &StreamingSettings::toast,
                [&] { running = s.pc.pc.processes.isRunning("vrserver.exe"); });
        s.settings.setEffects({}, LinkKind::Wireless, "D3");
        QVERIFY(running);
        QVERIFY(!s.pc.pc.processes.isRunning("vrserver.exe"));
    }

    void theLockIsHeldFromTheStopToTheFiles()
    {
        Settings s(dir());
        s.pc.pc.processes.start("vrserver.exe");
        writeFile("session.json", R"({"sessionSettings":{"video":{"preferredFps":1}}})");
        const QByteArray session = readFile("session.json");
        int stops = 0;
        s.pc.pc.journal.onLine([&](const QString &line) {
            if (!line.contains("-shutdown"))
                return;
            ++stops;
            QVERIFY(!s.lock.tryLock());
            // Nothing is written while SteamVR could still read it.
            QVERIFY(readFile("set.json").isEmpty());
            QCOMPARE(readFile("session.json"), session);
            QCOMPARE(s.pc.clock.slept(), 0);
        });
        s.settings.setEffects({1, 1, 1, false, false, false, false}, LinkKind::Wireless, "D3X");
        QCOMPARE(stops, 1);
        QVERIFY(s.pc.clock.slept() >= 500);
        QVERIFY(!readFile("set.json").isEmpty());
        QVERIFY(readFile("session.json") != session);
        QVERIFY(s.lock.tryLock());
        s.lock.unlock();
    }

    void theFilesAreWrittenHalfASecondAfterTheStop()
    {
        Settings s(dir());
        int writes = 0;
        s.settings.restartAround([&] {
            ++writes;
            QCOMPARE(s.pc.clock.slept(), 500);
            QVERIFY(!s.lock.tryLock());
            QCOMPARE(loggedCount("[steam] stopSteamVR"), 1);
        });
        QCOMPARE(writes, 1);
    }

    void theSerialIsMadeCurrentBeforeTheValuesAreStored()
    {
        Settings s(dir());
        s.pc.config.saveDeviceSettings("D3X");
        s.settings.setEffects({0, 1, 0, false, false, false, false}, LinkKind::Wired, "D2Y");
        QCOMPARE(stored("D2").value("definitionIndex").toInt(), 0);
        QCOMPARE(stored("D2").value("bitRate_wired").toString(), QString("20"));
        QCOMPARE(stored("D2").value("bitRate").toString(), QString("50"));
        QCOMPARE(stored("D3").value("definitionIndex").toInt(), 1);
        const QJsonObject set = QJsonDocument::fromJson(readFile("set.json")).object();
        QCOMPARE(set.value("lastSn").toString(), QString("D2Y"));
        QCOMPARE(set.value("wiredOrWireless").toInt(), 1);
    }

    void withoutASerialTheStoredOneStays()
    {
        Settings s(dir());
        s.pc.config.saveDeviceSettings("D2Y");
        s.settings.setEffects({2, 1, 1, false, false, false, false}, LinkKind::Wireless, {});
        QCOMPARE(stored("D2").value("definitionIndex").toInt(), 2);
        const QJsonObject set = QJsonDocument::fromJson(readFile("set.json")).object();
        QCOMPARE(set.value("lastSn").toString(), QString("D2Y"));
    }

    void customEffectsUseTheCustomValues()
    {
        Settings s(dir());
        s.pc.config.saveDeviceSettings("D3X");
        s.settings.setCustom(130, 85, LinkKind::Wired, "D3X");
        s.settings.setEffects({3, 1, 1, false, false, false, false}, LinkKind::Wired, "D3X");
        QCOMPARE(stored("D3").value("scale").toString(), QString("130"));
        QCOMPARE(stored("D3").value("bitRate_wired").toString(), QString("85"));
        QCOMPARE(stored("D3").value("bitRate").toString(), QString("50"));
        QCOMPARE(stored("D3").value("customize").toBool(), true);
    }

    void aScaleThatIsANumberReadsAsNothing()
    {
        writeFile("set.json", R"({"D3":{"customize":true,"bitRate":"60"},"lastSn":"D3X"})");
        Settings s(dir());
        QCOMPARE(s.settings.scale(), 0);
        QCOMPARE(s.settings.bitRate(LinkKind::Wireless), 60);
        QCOMPARE(s.settings.current().definitionIndex, 3);
    }

    void customValuesWaitForTheNextSave()
    {
        Settings s(dir());
        s.pc.config.saveDeviceSettings("D3X");
        const QByteArray before = readFile("set.json");
        s.settings.setCustom(120, 80, LinkKind::Wireless, "D3X");
        QCOMPARE(readFile("set.json"), before);
        s.pc.config.saveDeviceSettings({});
        QCOMPARE(stored("D3").value("scale").toString(), QString("120"));
        QCOMPARE(stored("D3").value("bitRate").toString(), QString("80"));
        QCOMPARE(stored("D3").value("bitRate_wired").toString(), QString("50"));
    }

    void theBitRateIsSavedAtOnceForItsLinkOnly()
    {
        Settings s(dir());
        s.settings.setBitRate(75, LinkKind::Wired, "D3X");
        QCOMPARE(stored("D3").value("bitRate_wired").toString(), QString("75"));
        QCOMPARE(stored("D3").value("bitRate").toString(), QString("50"));
        QCOMPARE(s.settings.bitRate(LinkKind::Wired), 75);
        QCOMPARE(s.settings.bitRate(LinkKind::Wireless), 50);
        QVERIFY(s.pc.pc.journal.lines().isEmpty());
        QVERIFY(s.pc.clock.idle()); // no restart
    }

    void theCurrentValuesComeFromTheStore()
    {
        Settings s(dir());
        s.settings.apply({3, 1, 3, true, false, true, false}, LinkKind::Wireless);
        const SettingsChoice now = s.settings.current();
        QCOMPARE(now.definitionIndex, 3);
        QCOMPARE(now.fpsIndex, 1);
        QCOMPARE(now.encodeIndex, 3);
        QCOMPARE(now.audio, true);
        QCOMPARE(now.tenBit, true);
        QCOMPARE(now.fullRange, true);
        QCOMPARE(now.hdr, false);
        QCOMPARE(s.settings.scale(), 100);
    }
};

KOLM_TEST_MAIN(TestStreamingSettings)
#include "tst_streaming_settings.moc"
