#include "controller/help_links.h"
#include "controller/vr_list_model.h"
#include "tests/controller/controller_test.h"

#include <QDir>
#include <QMetaMethod>
#include <QMetaProperty>

// What the pages see of the controller, name by name.
class TestOrbFace : public ControllerTest
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

    void theListModelIsHandedOut()
    {
        ControllerFixture f(dir());
        auto *model = f.orb().vrLists().value<VRListModel *>();
        QVERIFY(model);
        QCOMPARE(model->parent(), &f.orb());
    }

    void webPagesAreOpened()
    {
        QDir(dir()).mkpath("guide");
        writeFile("guide/en.html", "<html/>");
        ControllerFixture f(dir());
        f.applicationDir = dir();
        f.orb().gotoWeb(ORBManager::SteamUrl);
        f.orb().gotoWeb(ORBManager::UserHelperUrl);
        f.orb().gotoWeb(ORBManager::SteamHelperUrl);
        f.orb().gotoWeb(static_cast<ORBManager::Urls>(7));
        f.orb().openNetworkSetting();
        QCOMPARE(f.opened.size(), 4);
        QCOMPARE(f.opened[1], help_links::userGuide(QLocale::system().language(), dir()));
        QCOMPARE(f.opened[1], f.opened[2]);
        QVERIFY(f.opened[0] != f.opened[1]);
        QCOMPARE(f.opened[3], QUrl("ms-settings:network"));
    }

    void aGuideThatIsMissingIsNotOpened()
    {
        if (!help_links::builtGuideAddresses().english.isEmpty())
            QSKIP("this build opens an address, which is never missing");
        ControllerFixture f(dir());
        f.applicationDir = dir();
        announce("there is no user guide beside the program");
        f.orb().gotoWeb(ORBManager::UserHelperUrl);
        QVERIFY(f.opened.isEmpty());
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

KOLM_TEST_MAIN(TestOrbFace)
#include "tst_orb_face.moc"
