#include "tests/controller/controller_test.h"

// The headset as the pages are told of it, over Wi-Fi and on the cable.
class TestOrbHeadset : public ControllerTest
{
    Q_OBJECT

private slots:
    void theNameIsTheFixedTextUnlessAHeadsetIsOnWifi_data()
    {
        QTest::addColumn<QString>("serial");
        QTest::addColumn<QString>("name");
        QTest::newRow("long") << "D3A0123456"
                              << "眼镜ID：123456";
        QTest::newRow("six") << "D3ABCD"
                             << "眼镜ID：D3ABCD";
        QTest::newRow("short") << "D3"
                               << "眼镜ID：D3";
    }
    void theNameIsTheFixedTextUnlessAHeadsetIsOnWifi()
    {
        QFETCH(QString, serial);
        QFETCH(QString, name);
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QCOMPARE(f.orb().vrName(), QString("星程之光眼镜"));
        f.server.headsets = {{serial, "10.0.0.7", false}};
        f.pass(20000);
        QVERIFY(f.orb().vrIsConnect());
        QCOMPARE(f.orb().vrName(), name);
    }

    void whileWiredTheNameIsTheFixedTextEvenWhenConnected()
    {
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning());
        f.server.usbConnected = true;
        f.orb();
        f.pass(20000);
        QVERIFY(f.orb().vrIsConnect());
        QCOMPARE(f.orb().vrName(), QString("星程之光眼镜"));
        QVERIFY(f.server.received.contains("WiredConnect"));
        QVERIFY(!f.server.received.contains("HMDInfoRequest"));
    }

    void aD2HeadsetIsKnownByItsExactPrefix_data()
    {
        QTest::addColumn<QString>("serial");
        QTest::addColumn<bool>("d2");
        QTest::newRow("D2") << "D2A" << true;
        QTest::newRow("d2") << "d2A" << false;
        QTest::newRow("D3") << "D3D2" << false;
        QTest::newRow("empty") << "" << false;
    }
    void aD2HeadsetIsKnownByItsExactPrefix()
    {
        QFETCH(QString, serial);
        QFETCH(bool, d2);
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.orb().connectVR(serial, "10.0.0.7");
        QCOMPARE(f.orb().isD2(), d2);
    }

    void anEmptyListEqualsNoHeadsetToReconnect()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QVERIFY(f.orb().isHasConnectedDevice());
        f.server.headsets = {{"D3A", "10.0.0.7", false}, {"D3B", "10.0.0.8", false}};
        f.pass(5000);
        QVERIFY(!f.orb().isHasConnectedDevice());
        f.orb().connectVR("D3B", "10.0.0.8");
        QVERIFY(f.orb().isHasConnectedDevice());
    }

    void theSettingsOfAnotherModelAreAnnouncedWithItsHeadset()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.emitted.clear();
        f.orb().connectVR("D2A", "10.0.0.7");
        QCOMPARE(f.emitted, QStringList({"av1AvailableChanged", "effectChange"}));
        QCOMPARE(f.orb().widthIndex(), 1600);
        QCOMPARE(f.orb().heightIndex(), 1600);
    }

    void steamsToastsReachTheUserForTwoSeconds()
    {
        ControllerFixture f(dir());
        f.orb();
        emit f.steam.showToast("启动Steam失败");
        QCOMPARE(f.toasts(), QStringList{"showToast(启动Steam失败,2000)"});
    }

    void aUsbHeadsetCountsOnlyInWiredMode()
    {
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(5000);
        f.emitted.clear();
        f.server.usbConnected = true;
        f.server.sendWiredConnect(true);
        emit f.adb.deviceConnect(true, "D2USB");
        QCOMPARE(f.emitted, QStringList({"vrIsConnectChange", "showVrList(true,false)",
                                         "hasEnumdevicesChange"}));
        QVERIFY(f.orb().hasEnumdevices());
        QVERIFY(f.orb().isD2());
        emit f.adb.deviceConnect(false, QString());
        QVERIFY(!f.orb().hasEnumdevices());
        QVERIFY(f.orb().isD2()); // the serial stays current
        emit f.adb.showAdbTipToast();
        QCOMPARE(f.toasts(), QStringList{"showToast(设备连接失败，请插拔眼镜再试,2000)"});

        f.orb().setProperty("wired", false);
        f.emitted.clear();
        emit f.adb.deviceConnect(true, "D2USB");
        emit f.adb.showAdbTipToast();
        QVERIFY(f.emitted.isEmpty());
    }

    void everyWiredPollLetsAdbLookAndWhatItFindsIsTheHeadset()
    {
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QCOMPARE(f.adbLines, QStringList{"adb --version"});
        f.adb.take("Android Debug Bridge version 1.0.41\r\n");
        f.pass(11000); // the start's look, and those of two polls
        const QString look = "adb devices && adb forward --list";
        QVERIFY(f.adbLines.count(look) >= 1);
        f.emitted.clear();
        f.adb.take("List of devices attached\r\nD2USB\tdevice\r\n\r\n");
        QCOMPARE(f.count("hasEnumdevicesChange"), 1);
        QVERIFY(f.orb().hasEnumdevices());
        QVERIFY(f.orb().isD2());
        const int looks = f.adbLines.count(look);
        f.pass(6000);
        QCOMPARE(f.adbLines.count(look), looks + 1);
        f.adb.take("List of devices attached\r\n\r\n");
        QVERIFY(!f.orb().hasEnumdevices());
    }

    void inWirelessModeNobodyAsksAdb()
    {
        store(LinkKind::Wireless);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.adb.take("Android Debug Bridge version 1.0.41\r\n");
        f.pass(20000);
        QCOMPARE(f.adbLines, QStringList{"adb --version"});
    }

    void theSerialOfAUsbHeadsetIsStoredOnARestart()
    {
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        emit f.adb.deviceConnect(true, "D1USB");
        f.steam.restartSteamVR();
        QCOMPARE(f.config.serial(), QString("D1USB"));
    }

    void switchingToWirelessEndsAdb()
    {
        store(LinkKind::Wired);
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(4000);
        f.pc.processes.start("adb.exe");
        f.orb().setProperty("wired", false);
        QVERIFY(!f.pc.processes.isRunning("adb.exe"));
        QCOMPARE(f.count("wiredChange"), 1);
    }

    void shutdownAdbEndsItToo()
    {
        ControllerFixture f(dir());
        f.pc.processes.start("adb.exe");
        f.orb().shutdownADB();
        QVERIFY(!f.pc.processes.isRunning("adb.exe"));
    }
};

KOLM_TEST_MAIN(TestOrbHeadset)
#include "tst_orb_headset.moc"
