#include "config/recent_headsets.h"
#include "controller/help_links.h"
#include "controller/vr_list_model.h"
#include "tests/controller/controller_fixture.h"
#include "tests/support/test_case.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QMetaMethod>
#include <QMetaProperty>

namespace {

// The settings file of a run that chose a mode before.
QByteArray storedMode(int mode)
{
    return QJsonDocument(QJsonObject{{"wiredOrWireless", mode}, {"lastSn", "D3A"}}).toJson();
}

// A PC that can stream by the rules below, with a driver of this version.
PcFixture::Describe goodPc(quint64 driver)
{
    return [driver](SimPc &pc) {
        pc.registry.setText(
            "HKEY_LOCAL_MACHINE\\HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0",
            "ProcessorNameString", "Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz");
        pc.facts.adapters.set({{0x10de, 1, "NVIDIA GeForce RTX 4070", 1}});
        pc.facts.displayDevices.set({{{true, {{"NVIDIA", driver}}}}});
    };
}

constexpr quint64 newDriver = 0x001f'0000'000f'1438; // 31.0.15.5176
constexpr quint64 oldDriver = 0x001f'0000'000f'0e9d; // 31.0.15.3741

const QByteArray rules = R"({"cpu":{"mid":["i7"]},"graphics":{"high":["RTX 4070"]}})";

constexpr int wired = 1;
constexpr int wireless = 2;

} // namespace

class TestORBManager : public TestCase
{
    Q_OBJECT

private slots:
    void thePropertiesStandInTheirOrder()
    {
        const QMetaObject &meta = ORBManager::staticMetaObject;
        QStringList properties;
        for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
            const QMetaProperty property = meta.property(i);
            properties << QStringLiteral("%1 %2 %3%4")
                              .arg(property.typeName(), property.name(),
                                   property.notifySignal().name(),
                                   property.isWritable() ? " writable" : "");
            QVERIFY(property.isReadable());
            QVERIFY(!property.isConstant());
        }
        QCOMPARE(properties, QStringList({"QString systemInfo systemInfoChange",
                                          "QString simplySystemInfo systemInfoChange",
                                          "HardwareState pcHardware pcHardwareChange",
                                          "SteamState steamState steamStateChange",
                                          "QString vrName vrIsConnectChange",
                                          "bool vrIsConnect vrIsConnectChange",
                                          "QVariant vrLists vrListsChange",
                                          "int fpsIndex effectChange",
                                          "bool audioStatus effectChange",
                                          "bool tenbitEnc effectChange",
                                          "bool fullRangeColor effectChange",
                                          "bool enableHdr effectChange",
                                          "int definitionIndex effectChange",
                                          "int encodeType effectChange",
                                          "int widthIndex effectChange",
                                          "int heightIndex effectChange",
                                          "int bitRate effectChange",
                                          "int videoRatio effectChange",
                                          "bool haslaunchSteamVR haslaunchSteamVRChange",
                                          "bool haslaunchSteam haslaunchSteamChange",
                                          "bool wired wiredChange writable",
                                          "bool hasEnumdevices hasEnumdevicesChange",
                                          "bool AV1available av1AvailableChanged",
                                          "bool nvidiaAvailable effectChange"}));
    }

    void theSignalsAndMethodsStandInTheirOrder()
    {
        const QMetaObject &meta = ORBManager::staticMetaObject;
        QStringList methods;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
            methods << QString::fromLatin1(meta.method(i).methodSignature());
        QCOMPARE(methods, QStringList({"systemInfoChange()",
                                       "pcHardwareChange()",
                                       "steamStateChange()",
                                       "vrListsChange()",
                                       "vrIsConnectChange()",
                                       "handleEvent()",
                                       "sendMsg()",
                                       "av1AvailableChanged()",
                                       "widthIndexChanged()",
                                       "heightIndexChanged()",
                                       "showToast(QString,int)",
                                       "showToast(QString)",
                                       "showPowerTip()",
                                       "closePowerTip()",
                                       "effectChange()",
                                       "closeExe()",
                                       "showMoreHMD()",
                                       "showVrList(bool,bool)",
                                       "hasEnumdevicesChange()",
                                       "showNetWorkSetting()",
                                       "showUpdateGPUPage()",
                                       "showUseProtPage(QString)",
                                       "haslaunchSteamVRChange()",
                                       "haslaunchSteamChange()",
                                       "connectVRSignal()",
                                       "wiredChange()",
                                       "gotoWeb(ORBManager::Urls)",
                                       "sendFeecback(QString,QString)",
                                       "setEffects(int,int,int,bool,bool,bool,bool)",
                                       "launchSteam(bool)",
                                       "launchSteam()",
                                       "connectVR(QString,QString,bool)",
                                       "connectVR(QString,QString)",
                                       "setupNewVersion()",
                                       "stopSteam()",
                                       "isHasConnectedDevice()",
                                       "reportstreamMode(bool,bool)",
                                       "openNetworkSetting()",
                                       "installAudio()",
                                       "trimmedString(QString)",
                                       "closeApp()",
                                       "shutdownADB()",
                                       "checkPortUsage()",
                                       "isD2()",
                                       "setVideoQuilty(int,int)",
                                       "setVideoBitRate(int)",
                                       "isHideSelectPage()"}));
    }

    void theEnumsHaveTheirValues()
    {
        const QMetaObject &meta = ORBManager::staticMetaObject;
        const auto values = [&](const char *name) {
            const QMetaEnum e = meta.enumerator(meta.indexOfEnumerator(name));
            QStringList list;
            for (int i = 0; i < e.keyCount(); ++i)
                list << QStringLiteral("%1=%2").arg(e.key(i)).arg(e.value(i));
            return list.join(' ');
        };
        QCOMPARE(values("Urls"), QString("SteamUrl=0 UserHelperUrl=1 SteamHelperUrl=2"));
        QCOMPARE(values("HardwareState"),
                 QString("NotCanRun=0 LowHardware=1 AdviceHardware=2 ExcellentHardware=3"));
        QCOMPARE(values("SteamState"), QString("Pass=0 NoneSteam=1 NoneSteamVR=2 SteamVRForbid=3"));
    }

    void withoutAStoredModeNothingIsPolledUntilTheUserChooses()
    {
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QVERIFY(!f.orb().isHideSelectPage());
        QVERIFY(!f.linkMade);
        f.clock.advance(60000);
        QVERIFY(f.emitted.isEmpty());
        QVERIFY(f.pc.journal.lines().isEmpty());
        QCOMPARE(loggedCount("getWiredOrWireless : 0"), 1);

        f.orb().setProperty("wired", false);
        QVERIFY(f.linkMade);
        QVERIFY(!f.orb().isHideSelectPage()); // of this run's start
        f.clock.advance(5000);
        QCOMPARE(f.count("handleEvent"), 1);
    }

    void aStoredModeIsTakenUpByItself()
    {
        writeFile("set.json", storedMode(wireless));
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QVERIFY(f.orb().isHideSelectPage());
        QVERIFY(f.linkMade);
        QVERIFY(!f.orb().wired());
        QCOMPARE(loggedCount("getWiredOrWireless : 2"), 1);
        QCOMPARE(loggedCount("init end"), 1);
        QCOMPARE(f.orb().steamState(), ORBManager::Pass);
        QCOMPARE(f.pc.journal.lines(),
                 QStringList({"cell write 0", "launch explorer steam://rungameid/250820"}));
        QCOMPARE(f.events.size(), 1);
        QCOMPARE(f.events[0].first,
                 QString("streamingAssistant_streaming_streamingType_0_0_page_view"));
    }

    void aStoredWiredModeIsTakenUpToo()
    {
        writeFile("set.json", storedMode(wired));
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QVERIFY(f.orb().wired());
        QCOMPARE(loggedCount("getWiredOrWireless : 1"), 1);
    }

    void whatAnEarlierSessionLeftRunningIsStoppedFirst()
    {
        writeFile("set.json", storedMode(wireless));
        SteamOptions options = steamRunning();
        options.steamVrRunning = true;
        ControllerFixture f(dir(), options);
        QVERIFY(f.pc.processes.isRunning("vrserver.exe"));
        f.orb();
        QVERIFY(f.pc.journal.lines().first().contains("vrstartup.exe -shutdown"));
        QVERIFY(f.pc.journal.lines().last().contains("steam://rungameid/250820"));
    }

    void theWirelessRoadFromStartToConnected()
    {
        writeFile("set.json", storedMode(wireless));
        ControllerFixture f(dir());
        f.server.present = false;
        f.server.headsets = {{"D3A0123456", "10.0.0.7", false}};
        f.server.reportedId = "D3A0123456";
        f.pc.events.onLine(
            [&](const QString &) { f.server.present = f.pc.processes.isRunning("vrserver.exe"); });
        f.orb();
        announce("[steam] hasLaunchSteamVR:false; switch: 1");
        for (int i = 0; i < 90 && !f.orb().vrIsConnect(); ++i) {
            f.pass(1000);
            f.server.present = f.pc.processes.isRunning("vrserver.exe");
        }
        QVERIFY(f.orb().vrIsConnect());
        QVERIFY(f.orb().haslaunchSteam());
        QVERIFY(f.orb().haslaunchSteamVR());
        QCOMPARE(f.orb().vrName(), QString("眼镜ID：123456"));
        QVERIFY(f.orb().hasEnumdevices());
        QVERIFY(f.server.received.contains("LinkTo D3A0123456 10.0.0.7 "));
        f.pass(3000); // the streaming driver loads after SteamVR's server
        QVERIFY(f.vrPath().value("external_drivers").isNull()); // registered and removed again
        QCOMPARE(loggedCount("[steam] vrserver.exe detected, clearing VR config"), 1);
    }

    void closingStopsSteamVRAndStoresEverything()
    {
        writeFile("set.json", storedMode(wireless));
        writeFile("setting.inf", "D1Z;;D2Y;");
        writeFile("session.json",
                  R"({"other":{"id":9007199254740993},"sessionSettings":{"headset":{"a":1}}})");
        ControllerFixture f(dir(), steamRunning());
        f.server.headsets = {{"D2NEW", "10.0.0.7", false}};
        f.orb();
        f.pass(20000);
        QVERIFY(f.orb().vrIsConnect());
        f.pc.journal.clear();
        const qint64 slept = f.clock.slept();
        f.close();
        QVERIFY(f.pc.journal.lines().first().contains("vrstartup.exe -shutdown"));
        QVERIFY(!f.pc.processes.isRunning("vrserver.exe"));
        QVERIFY(f.clock.slept() - slept >= 1000 + 2500);
        const QJsonObject set = QJsonDocument::fromJson(readFile("set.json")).object();
        QCOMPARE(set.value("lastSn").toString(), QString("D2NEW"));
        QCOMPARE(set.value("wiredOrWireless").toInt(), 2);
        const QByteArray session = readFile("session.json");
        QCOMPARE(QJsonDocument::fromJson(session)
                     .object()["sessionSettings"]
                     .toObject()["headset"]
                     .toObject()["serialNumber"]
                     .toString(),
                 QString("D2NEW"));
        QVERIFY(session.contains("9007199254740993"));
        QCOMPARE(readFile("setting.inf"), QByteArray("D2NEW;D1Z;D2Y"));
    }

    void theRecentListIsReadWithoutItsEmptyEntries_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("serials");
        QTest::newRow("missing") << QByteArray() << QStringList();
        QTest::newRow("empty") << QByteArray("") << QStringList();
        QTest::newRow("doubled") << QByteArray("A;;B;") << QStringList({"A", "B"});
    }
    void theRecentListIsReadWithoutItsEmptyEntries()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, serials);
        if (!content.isNull())
            writeFile("setting.inf", content);
        ControllerFixture f(dir());
        f.orb();
        f.close();
        QCOMPARE(readFile("setting.inf"), serials.join(';').toUtf8());
    }

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
        writeFile("set.json", storedMode(wireless));
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
        writeFile("set.json", storedMode(wired));
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
        writeFile("set.json", storedMode(wireless));
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.orb().connectVR(serial, "10.0.0.7");
        QCOMPARE(f.orb().isD2(), d2);
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
        writeFile("set.json", storedMode(wired));
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
        writeFile("set.json", storedMode(wired));
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
        writeFile("set.json", storedMode(wireless));
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.adb.take("Android Debug Bridge version 1.0.41\r\n");
        f.pass(20000);
        QCOMPARE(f.adbLines, QStringList{"adb --version"});
    }

    void theSerialOfAUsbHeadsetIsStoredOnARestart()
    {
        writeFile("set.json", storedMode(wired));
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        emit f.adb.deviceConnect(true, "D1USB");
        f.steam.restartSteamVR();
        QCOMPARE(f.config.serial(), QString("D1USB"));
    }

    void switchingToWirelessEndsAdb()
    {
        writeFile("set.json", storedMode(wired));
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

    void stoppingSteamEndsThePollAndSteamVR()
    {
        writeFile("set.json", storedMode(wireless));
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.pass(10000);
        QVERIFY(f.pc.processes.isRunning("vrserver.exe"));
        f.orb().stopSteam();
        f.orb().stopSteam(); // harmless
        QVERIFY(!f.pc.processes.isRunning("vrserver.exe"));
        f.emitted.clear();
        f.pass(20000);
        QCOMPARE(f.count("handleEvent"), 0);
    }

    void anEmptyListEqualsNoHeadsetToReconnect()
    {
        writeFile("set.json", storedMode(wireless));
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        QVERIFY(f.orb().isHasConnectedDevice());
        f.server.headsets = {{"D3A", "10.0.0.7", false}, {"D3B", "10.0.0.8", false}};
        f.pass(5000);
        QVERIFY(!f.orb().isHasConnectedDevice());
        f.orb().connectVR("D3B", "10.0.0.8");
        QVERIFY(f.orb().isHasConnectedDevice());
    }

    void theListModelIsHandedOut()
    {
        ControllerFixture f(dir());
        auto *model = f.orb().vrLists().value<VRListModel *>();
        QVERIFY(model);
        QCOMPARE(model->parent(), &f.orb());
    }

    void theSettingsOfAnotherModelAreAnnouncedWithItsHeadset()
    {
        writeFile("set.json", storedMode(wireless));
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.emitted.clear();
        f.orb().connectVR("D2A", "10.0.0.7");
        QCOMPARE(f.emitted, QStringList({"av1AvailableChanged", "effectChange"}));
        QCOMPARE(f.orb().widthIndex(), 1600);
        QCOMPARE(f.orb().heightIndex(), 1600);
    }

    void theTimesOfOneRunAreReportedAtItsEnd()
    {
        ControllerFixture f(dir());
        f.orb();
        f.clock.advance(61999);
        f.orb().closeApp();
        QCOMPARE(f.events.last().first, QString("streamingAssistant_streaming_0_0_0_module_pend"));
        QCOMPARE(f.events.last().second, (QJsonObject{{"duration", 61}}));
    }

    void aSteamVRApplicationIsReportedWithTheSettingsOfTheStart()
    {
        writeFile("set.json",
                  R"({"wiredOrWireless":2,"D3":{"definitionIndex":0,"fps":"72","audio":true}})");
        ControllerFixture f(dir(), steamRunning());
        f.orb();
        f.orb().setEffects(2, 1, 1, false, false, false, false);
        emit f.steam.steamAppChange(5, "Game");
        const QJsonObject expected{
            {"duration", 5}, {"streamingApp", "Game"}, {"streamingType", "wireless"},
            {"fps", 72},     {"microphoneOn", true},   {"graphicsQuality", "High"}};
        QCOMPARE(f.events.last().second, expected);
    }

    void theGuideIsInTheLanguageThatIsNearest_data()
    {
        QTest::addColumn<QLocale::Language>("language");
        QTest::addColumn<bool>("chinese");
        QTest::newRow("Chinese") << QLocale::Chinese << true;
        QTest::newRow("English") << QLocale::English << false;
        QTest::newRow("Japanese") << QLocale::Japanese << false;
        QTest::newRow("none") << QLocale::C << false;
    }
    void theGuideIsInTheLanguageThatIsNearest()
    {
        QFETCH(QLocale::Language, language);
        QFETCH(bool, chinese);
        const QUrl inChinese = help_links::userGuide(QLocale::Chinese);
        const QUrl inEnglish = help_links::userGuide(QLocale::English);
        QVERIFY(inChinese.isValid() && inEnglish.isValid() && inChinese != inEnglish);
        QCOMPARE(help_links::userGuide(language), chinese ? inChinese : inEnglish);
    }

    void webPagesAreOpened()
    {
        ControllerFixture f(dir());
        f.orb().gotoWeb(ORBManager::SteamUrl);
        f.orb().gotoWeb(ORBManager::UserHelperUrl);
        f.orb().gotoWeb(ORBManager::SteamHelperUrl);
        f.orb().gotoWeb(static_cast<ORBManager::Urls>(7));
        f.orb().openNetworkSetting();
        QCOMPARE(f.opened.size(), 4);
        QCOMPARE(f.opened[1], f.opened[2]);
        QVERIFY(f.opened[0] != f.opened[1]);
        QCOMPARE(f.opened[3], QUrl("ms-settings:network"));
    }

    void theCablesInstallerIsStartedOnlyWhereTheCableIsMissing()
    {
        ControllerFixture f(dir());
        QVERIFY(!f.orb().installAudio());
        const QString started = "launch C:/KOLM/installaudio/VBCABLE_Setup_x64.exe (elevated) "
                                "in C:/KOLM";
        QCOMPARE(f.pc.journal.lines(), QStringList{started});
        // A second cable goes by another name.
        f.pc.facts.recordingDevices.set({"CABLE Output (2- VB-Audio Virtual Cable)"});
        QVERIFY(!f.orb().installAudio());
        QCOMPARE(f.pc.journal.lines(), QStringList({started, started}));
        f.pc.facts.recordingDevices.set({"CABLE Output (VB-Audio Virtual Cable)"});
        QVERIFY(f.orb().installAudio());
        QCOMPARE(f.pc.journal.lines().size(), 2);
    }

    void thePcIsLookedAtWhenTheFirstModeIsChosen()
    {
        writeFile("compare.json", rules);
        ControllerFixture f(dir(), steamRunning(), goodPc(newDriver));
        QCOMPARE(f.orb().systemInfo(), QString("[]"));
        QCOMPARE(f.orb().simplySystemInfo(), QString("[]"));
        QVERIFY(!f.orb().nvidiaAvailable());
        QStringList seen; // by a page that reads on each announcement
        QObject::connect(&f.orb(), &ORBManager::systemInfoChange, [&] {
            seen << (f.orb().systemInfo() == "[]" ? "empty" : "lists");
            seen << (f.orb().nvidiaAvailable() ? "name" : "no name yet");
            QVERIFY(!f.linkMade);
        });
        QObject::connect(&f.orb(), &ORBManager::pcHardwareChange, [&] {
            seen << (f.orb().pcHardware() == ORBManager::AdviceHardware ? "good" : "bad");
            QVERIFY(!f.linkMade);
        });
        f.orb().setProperty("wired", false);
        QCOMPARE(seen, QStringList({"lists", "no name yet", "good"}));
        QCOMPARE(f.emitted.mid(0, 2), QStringList({"systemInfoChange", "pcHardwareChange"}));
        QVERIFY(f.linkMade);
        QVERIFY(f.orb().nvidiaAvailable());
        QVERIFY(f.orb().simplySystemInfo().contains("NVIDIA GeForce RTX 4070"));

        // Once per run.
        f.emitted.clear();
        f.pass(5000);
        f.orb().setProperty("wired", true);
        QCOMPARE(f.count("systemInfoChange") + f.count("pcHardwareChange"), 0);
    }

    void aRunBeginsInItsOrder()
    {
        ControllerFixture f(dir(), steamRunning());
        QStringList order;
        const auto note = [&](const char *what) {
            return [this, &order, &f, what] {
                order << what << (readFile("set.json").isEmpty() ? "unwritten" : "written")
                      << (f.linkMade ? "listening" : "deaf")
                      << (f.pc.journal.lines().isEmpty() ? "" : "SteamVR");
            };
        };
        QObject::connect(&f.orb(), &ORBManager::systemInfoChange, note("PC"));
        QObject::connect(&f.orb(), &ORBManager::steamStateChange, note("Steam"));
        QObject::connect(&f.orb(), &ORBManager::handleEvent, note("poll"));
        f.orb().setProperty("wired", false);
        QCOMPARE(order, QStringList({"PC", "written", "deaf", "", //
                                     "Steam", "written", "listening", "SteamVR"}));
        f.clock.advance(4999);
        QVERIFY(!order.contains("poll"));
        f.clock.advance(1);
        QVERIFY(order.contains("poll"));
    }

    void everyReadOfTheVerdictIsReported()
    {
        writeFile("compare.json", rules);
        writeFile("set.json", storedMode(wireless));
        ControllerFixture f(dir(), steamRunning(), goodPc(newDriver));
        f.orb();
        f.events.clear();
        f.emitted.clear();
        QCOMPARE(f.orb().pcHardware(), ORBManager::AdviceHardware);
        QCOMPARE(f.orb().property("pcHardware").toInt(), 2);
        QCOMPARE(f.events.size(), 2);
        QCOMPARE(f.events[1].first,
                 QString("streamingAssistant_streaming_wirelessStreaming_0_0_page_view"));
        QCOMPARE(f.events[1].second, (QJsonObject{{"is_available", true}}));
        QVERIFY(f.emitted.isEmpty());

        QVERIFY(QFile::remove("compare.json"));
        announce("cpu or gpu not match");
        QCOMPARE(f.orb().pcHardware(), ORBManager::NotCanRun);
        QCOMPARE(f.events.last().second, (QJsonObject{{"is_available", false}}));
        f.pc.facts.osVersion.set("8.1");
        announce("system not match");
        QCOMPARE(f.orb().pcHardware(), ORBManager::NotCanRun);
        QCOMPARE(f.events.size(), 4);
    }

    void theVerdictOfAWiredPcIsReportedAsWired()
    {
        writeFile("compare.json", rules);
        writeFile("set.json", storedMode(wired));
        ControllerFixture f(dir(), steamRunning(), goodPc(newDriver));
        f.orb().pcHardware();
        QCOMPARE(f.events.last().first,
                 QString("streamingAssistant_streaming_wiredStreaming_0_0_page_view"));
    }

    void anOldDriverIsToldOfBeforeTheReport()
    {
        writeFile("compare.json", rules);
        writeFile("set.json", storedMode(wireless));
        ControllerFixture f(dir(), steamRunning(), goodPc(oldDriver));
        f.orb();
        f.events.clear();
        f.emitted.clear();
        int reportedBefore = -1;
        QObject::connect(&f.orb(), &ORBManager::showUpdateGPUPage,
                         [&] { reportedBefore = f.events.size(); });
        QCOMPARE(f.orb().pcHardware(), ORBManager::AdviceHardware);
        QCOMPARE(f.emitted, QStringList{"showUpdateGPUPage"});
        QCOMPARE(reportedBefore, 0);
        QCOMPARE(f.events.size(), 1);

        // Who cannot stream is not asked to update.
        f.emitted.clear();
        writeFile("compare.json", "{}");
        announce("cpu or gpu not match");
        f.orb().pcHardware();
        QVERIFY(f.emitted.isEmpty());
    }

    void av1IsOfferedForTheCardAndTheHeadset()
    {
        writeFile("compare.json", rules);
        writeFile("set.json", storedMode(wireless)); // the last headset was a D3
        ControllerFixture f(dir(), steamRunning(), goodPc(newDriver));
        QVERIFY(f.orb().av1Available());
        f.orb().connectVR("D2A", "10.0.0.7");
        QVERIFY(!f.orb().av1Available());
        f.orb().connectVR("D3B", "10.0.0.8");
        QVERIFY(f.orb().av1Available());
        QVERIFY(QFile::remove("compare.json"));
        QVERIFY(!f.orb().av1Available());
    }

    void whoBlocksThePortsIsNamed()
    {
        ControllerFixture f(dir());
        f.orb().checkPortUsage();
        const quint32 helper = f.pc.processes.start("vrserver.exe");
        f.pc.ports.open(helper, 9943);
        f.pc.ports.open(f.pc.processes.start("adb.exe"), 50000);
        f.pc.ports.open(f.pc.processes.start("steam.exe"), 50001);
        f.orb().checkPortUsage();
        QVERIFY(f.emitted.isEmpty());

        f.pc.ports.open(f.pc.processes.start("node.exe"), 9944);
        f.pc.ports.open(f.pc.processes.start("nginx.exe"), 9943);
        f.orb().checkPortUsage();
        QCOMPARE(f.emitted, QStringList{"showUseProtPage(node.exe, nginx.exe)"});
    }

    void smallThings()
    {
        ControllerFixture f(dir());
        QCOMPARE(f.orb().trimmedString("  a b \n"), QString("a b"));
        f.orb().setupNewVersion();
        QCOMPARE(f.emitted, QStringList{"closeExe"});
        QVERIFY(!f.orb().nvidiaAvailable());
        QVERIFY(!f.orb().av1Available());
    }
};

KOLM_TEST_MAIN(TestORBManager)
#include "tst_orb_manager.moc"
