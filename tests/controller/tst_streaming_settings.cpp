#include "tests/controller/controller_test.h"
#include "tests/controller/parts_fixture.h"

#include <QSignalSpy>

class TestStreamingSettings : public ControllerTest
{
    Q_OBJECT

private slots:
    void effectsAreStoredAndSteamVRStartsTenSecondsLater()
    {
        PartsFixture s(dir());
        QSignalSpy toasts(&s.settings, &StreamingSettings::toast);
        s.settings.setEffects({2, 0, 0, true, false, true, true}, LinkKind::Wireless, "D2X");
        QCOMPARE(toasts.size(), 1);
        QCOMPARE(toasts[0][0].toString(), QString("steamVR重启设置中，请勿操作"));
        QCOMPARE(toasts[0][1].toInt(), 15000);
        const QJsonObject d2 = storedSettings("D2");
        QCOMPARE(d2.value("definitionIndex").toInt(), 2);
        QCOMPARE(d2.value("fps").toString(), QString("72"));
        QCOMPARE(d2.value("codec").toString(), QString("H264"));
        QCOMPARE(d2.value("bitRate").toString(), QString("100"));
        QCOMPARE(d2.value("audio").toBool(), true);
        QCOMPARE(d2.value("fullrange").toBool(), true);
        QCOMPARE(d2.value("hdr").toBool(), true);
        // SteamVR did not run: nothing to stop, but it is started all the same.
        QVERIFY(s.pc.journal.lines().isEmpty());
        QCOMPARE(s.clock.slept(), 500);
        s.clock.advance(9999);
        QVERIFY(s.pc.journal.lines().isEmpty());
        s.clock.advance(1);
        QCOMPARE(s.pc.journal.lines().last(), QString("launch explorer steam://rungameid/250820"));
    }

    void theToastComesBeforeTheStop()
    {
        PartsFixture s(dir());
        s.pc.processes.start("vrserver.exe");
        bool running = false;
        connect(&s.settings, &StreamingSettings::toast,
                [&] { running = s.pc.processes.isRunning("vrserver.exe"); });
        s.settings.setEffects({}, LinkKind::Wireless, "D3");
        QVERIFY(running);
        QVERIFY(!s.pc.processes.isRunning("vrserver.exe"));
    }

    void theLockIsHeldFromTheStopToTheFiles()
    {
        PartsFixture s(dir());
        s.pc.processes.start("vrserver.exe");
        writeFile("session.json", R"({"sessionSettings":{"video":{"preferredFps":1}}})");
        const QByteArray session = readFile("session.json");
        int stops = 0;
        s.pc.journal.onLine([&](const QString &line) {
            if (!line.contains("-shutdown"))
                return;
            ++stops;
            QVERIFY(!s.lock.tryLock());
            // Nothing is written while SteamVR could still read it.
            QVERIFY(readFile("set.json").isEmpty());
            QCOMPARE(readFile("session.json"), session);
            QCOMPARE(s.clock.slept(), 0);
        });
        s.settings.setEffects({1, 1, 1, false, false, false, false}, LinkKind::Wireless, "D3X");
        QCOMPARE(stops, 1);
        QVERIFY(s.clock.slept() >= 500);
        QVERIFY(!readFile("set.json").isEmpty());
        QVERIFY(readFile("session.json") != session);
        QVERIFY(s.lock.tryLock());
        s.lock.unlock();
    }

    void theFilesAreWrittenHalfASecondAfterTheStop()
    {
        PartsFixture s(dir());
        int writes = 0;
        s.settings.restartAround([&] {
            ++writes;
            QCOMPARE(s.clock.slept(), 500);
            QVERIFY(!s.lock.tryLock());
            QCOMPARE(loggedCount("[steam] stopSteamVR"), 1);
        });
        QCOMPARE(writes, 1);
    }

    void theSerialIsMadeCurrentBeforeTheValuesAreStored()
    {
        PartsFixture s(dir());
        s.config.saveDeviceSettings("D3X");
        s.settings.setEffects({0, 1, 0, false, false, false, false}, LinkKind::Wired, "D2Y");
        QCOMPARE(storedSettings("D2").value("definitionIndex").toInt(), 0);
        QCOMPARE(storedSettings("D2").value("bitRate_wired").toString(), QString("20"));
        QCOMPARE(storedSettings("D2").value("bitRate").toString(), QString("50"));
        QCOMPARE(storedSettings("D3").value("definitionIndex").toInt(), 1);
        const QJsonObject set = storedSettings();
        QCOMPARE(set.value("lastSn").toString(), QString("D2Y"));
        QCOMPARE(set.value("wiredOrWireless").toInt(), 1);
    }

    void withoutASerialTheStoredOneStays()
    {
        PartsFixture s(dir());
        s.config.saveDeviceSettings("D2Y");
        s.settings.setEffects({2, 1, 1, false, false, false, false}, LinkKind::Wireless, {});
        QCOMPARE(storedSettings("D2").value("definitionIndex").toInt(), 2);
        const QJsonObject set = storedSettings();
        QCOMPARE(set.value("lastSn").toString(), QString("D2Y"));
    }

    void customEffectsUseTheCustomValues()
    {
        PartsFixture s(dir());
        s.config.saveDeviceSettings("D3X");
        s.settings.setCustom(130, 85, LinkKind::Wired, "D3X");
        s.settings.setEffects({3, 1, 1, false, false, false, false}, LinkKind::Wired, "D3X");
        QCOMPARE(storedSettings("D3").value("scale").toString(), QString("130"));
        QCOMPARE(storedSettings("D3").value("bitRate_wired").toString(), QString("85"));
        QCOMPARE(storedSettings("D3").value("bitRate").toString(), QString("50"));
        QCOMPARE(storedSettings("D3").value("customize").toBool(), true);
    }

    void aScaleThatIsANumberReadsAsNothing()
    {
        writeFile("set.json", R"({"D3":{"customize":true,"bitRate":"60"},"lastSn":"D3X"})");
        PartsFixture s(dir());
        QCOMPARE(s.settings.scale(), 0);
        QCOMPARE(s.settings.bitRate(LinkKind::Wireless), 60);
        QCOMPARE(s.settings.current().definitionIndex, 3);
    }

    void customValuesWaitForTheNextSave()
    {
        PartsFixture s(dir());
        s.config.saveDeviceSettings("D3X");
        const QByteArray before = readFile("set.json");
        s.settings.setCustom(120, 80, LinkKind::Wireless, "D3X");
        QCOMPARE(readFile("set.json"), before);
        s.config.saveDeviceSettings({});
        QCOMPARE(storedSettings("D3").value("scale").toString(), QString("120"));
        QCOMPARE(storedSettings("D3").value("bitRate").toString(), QString("80"));
        QCOMPARE(storedSettings("D3").value("bitRate_wired").toString(), QString("50"));
    }

    void theBitRateIsSavedAtOnceForItsLinkOnly()
    {
        PartsFixture s(dir());
        s.settings.setBitRate(75, LinkKind::Wired, "D3X");
        QCOMPARE(storedSettings("D3").value("bitRate_wired").toString(), QString("75"));
        QCOMPARE(storedSettings("D3").value("bitRate").toString(), QString("50"));
        QCOMPARE(s.settings.bitRate(LinkKind::Wired), 75);
        QCOMPARE(s.settings.bitRate(LinkKind::Wireless), 50);
        QVERIFY(s.pc.journal.lines().isEmpty());
        QVERIFY(s.clock.idle()); // no restart
    }

    void theCurrentValuesComeFromTheStore()
    {
        PartsFixture s(dir());
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
