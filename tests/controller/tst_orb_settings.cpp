#include "tests/controller/controller_test.h"

// The streaming settings as the pages see and change them.
class TestOrbSettings : public ControllerTest
{
    Q_OBJECT

private slots:
    void freshSettingsAreShown()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        QCOMPARE(f.orb().definitionIndex(), 1);
        QCOMPARE(f.orb().fpsIndex(), 1);
        QCOMPARE(f.orb().encodeType(), 1);
        QCOMPARE(f.orb().audioStatus(), false);
        QCOMPARE(f.orb().tenbitEnc(), false);
        QCOMPARE(f.orb().fullRangeColor(), false);
        QCOMPARE(f.orb().enableHdr(), false);
        QCOMPARE(f.orb().bitRate(), 50);
        QCOMPARE(f.orb().videoRatio(), 100);
        QCOMPARE(f.orb().widthIndex(), 2880);
        QCOMPARE(f.orb().heightIndex(), 2656);
    }

    void effectsAreReadBackWithoutASignal()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(20000);
        f.orb().connectVR("D3A", "10.0.0.7");
        f.emitted.clear();
        f.orb().setEffects(2, 0, 3, true, false, true, true);
        QCOMPARE(f.emitted.first(), QString("showToast(steamVR重启设置中，请勿操作,15000)"));
        QCOMPARE(f.count("effectChange"), 0);
        QCOMPARE(f.count("av1AvailableChanged"), 0);
        QCOMPARE(f.orb().definitionIndex(), 2);
        QCOMPARE(f.orb().fpsIndex(), 0);
        QCOMPARE(f.orb().encodeType(), 3);
        QCOMPARE(f.orb().audioStatus(), true);
        QCOMPARE(f.orb().tenbitEnc(), true);
        QCOMPARE(f.orb().fullRangeColor(), true);
        QCOMPARE(f.orb().enableHdr(), true);
        QCOMPARE(f.orb().bitRate(), 100);
        QCOMPARE(f.orb().videoRatio(), 110);
    }

    void everyEffectReachesItsPlace_data()
    {
        QTest::addColumn<QString>("property");
        QTest::addColumn<int>("value");
        QTest::newRow("definition") << "definitionIndex" << 2;
        QTest::newRow("frame rate") << "fpsIndex" << 1;
        QTest::newRow("encoder") << "encodeType" << 3;
        QTest::newRow("audio") << "audioStatus" << 1;
        QTest::newRow("10 bits") << "tenbitEnc" << 1;
        QTest::newRow("full range") << "fullRangeColor" << 1;
        QTest::newRow("HDR") << "enableHdr" << 1;
    }
    // All are off but one.
    void everyEffectReachesItsPlace()
    {
        QFETCH(QString, property);
        QFETCH(int, value);
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        const auto chosen = [&](const char *name) { return property == name ? value : 0; };
        // The flag for 10 bits is heeded where the encoder is none of the known.
        const int encoder = property == "tenbitEnc" ? 4 : chosen("encodeType");
        f.orb().setEffects(chosen("definitionIndex"), chosen("fpsIndex"), encoder,
                           chosen("audioStatus"), chosen("tenbitEnc"), chosen("fullRangeColor"),
                           chosen("enableHdr"));
        QStringList on;
        for (const char *name : {"definitionIndex", "fpsIndex", "encodeType", "audioStatus",
                                 "tenbitEnc", "fullRangeColor", "enableHdr"}) {
            if (f.orb().property(name).toInt() != 0)
                on << name;
        }
        // AV1 is a codec of 10 bits, and so is what an unknown encoder stands for.
        QStringList expected{property};
        if (property == "encodeType")
            expected << "tenbitEnc";
        if (property == "tenbitEnc")
            expected.prepend("encodeType");
        QCOMPARE(on, expected);
        QCOMPARE(f.orb().property(qPrintable(property)).toInt(), value);
    }

    void effectsRestartSteamVRTenSecondsLater()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(20000);
        QVERIFY(f.pc.processes.isRunning("vrserver.exe"));
        announceMisses(3);
        f.pc.journal.clear();
        f.orb().setEffects(1, 1, 1, false, false, false, false);
        QVERIFY(f.pc.journal.lines().first().contains("vrstartup.exe -shutdown"));
        QVERIFY(!f.pc.processes.isRunning("vrserver.exe"));
        QVERIFY(!f.pc.journal.lines().contains("launch explorer steam://rungameid/250820"));
        f.pass(10000);
        QVERIFY(f.pc.journal.lines().contains("launch explorer steam://rungameid/250820"));
    }

    void customValuesSurviveTheEnd()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        const QByteArray before = (f.orb(), readFile("set.json"));
        f.orb().setVideoQuilty(130, 120);
        QCOMPARE(f.orb().videoRatio(), 130); // shown at once
        QCOMPARE(f.orb().bitRate(), 120);
        QCOMPARE(readFile("set.json"), before); // what a crash would leave
        f.close();
        QCOMPARE(storedSettings("D3").value("scale").toString(), QString("130"));
        QCOMPARE(storedSettings("D3").value("bitRate").toString(), QString("120"));
        QCOMPARE(storedSettings("D3").value("bitRate_wired").toString(), QString("50"));
    }

    void bitRateOfTheCableIsStoredAtOnce()
    {
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pc.journal.clear();
        f.emitted.clear();
        const qint64 slept = f.clock.slept();
        f.orb().setVideoBitRate(150);
        QCOMPARE(f.orb().bitRate(), 150);
        QCOMPARE(storedSettings("D3").value("bitRate_wired").toString(), QString("150"));
        QCOMPARE(storedSettings("D3").value("bitRate").toString(), QString("50"));
        QVERIFY(f.pc.journal.lines().isEmpty());
        QCOMPARE(f.emitted, QStringList());
        QCOMPARE(f.clock.slept(), slept);
    }

    void eachLinkHasItsBitRate()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(20000);
        // With a fixed definition each switch would store its bit rate again.
        announceMisses(3);
        f.orb().setVideoQuilty(100, 70);
        f.orb().setEffects(3, 1, 1, false, false, false, false);
        f.pass(20000);
        announceMisses(4);
        f.orb().setWiredOrWireless(true);
        QCOMPARE(f.orb().bitRate(), 50);
        f.orb().setVideoBitRate(150);
        f.pass(20000);
        f.orb().setWiredOrWireless(false);
        QCOMPARE(f.orb().bitRate(), 70);
    }

    void valuesGoToTheModelOfTheHeadset()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(20000);
        f.orb().connectVR("D2B", "10.0.0.7");
        QVERIFY(f.orb().isD2());
        f.orb().setVideoQuilty(90, 40);
        f.orb().setVideoBitRate(45);
        QCOMPARE(storedSettings("D2").value("scale").toString(), QString("90"));
        QCOMPARE(storedSettings("D2").value("bitRate").toString(), QString("45"));
        QCOMPARE(storedSettings("D3").value("bitRate").toString(), QString("50"));
        QCOMPARE(f.orb().widthIndex(), 1600);
    }

    void noHeadsetIsNoD2()
    {
        ControllerFixture f(dir(), steamRunning());
        QVERIFY(!f.orb().isD2());
    }
};

KOLM_TEST_MAIN(TestOrbSettings)
#include "tst_orb_settings.moc"
