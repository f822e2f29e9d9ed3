// Stand-ins for the objects that the pages work with: they show what a test
// tells them to show and write down what the pages ask of them.
#pragma once

#include "controller/connection_status.h"
#include "controller/vr_list_model.h"
#include "tests/support/zh.h"

#include <QObject>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <vector>

// The real list of headsets, filled by a test: row for row as it is shown.
class FakeHeadsets : public VRListModel
{
    Q_OBJECT

public:
    struct Row
    {
        QString name;
        QString address;
        bool connected = false;
        bool recent = false;
    };

    using VRListModel::VRListModel;

    // Replaces everything, as every poll does.
    void fill(const std::vector<Row> &rows);
};

// The controller: the same names, types and signals as the pages see of the
// real one. Each call and each write becomes a line of `calls`.
class FakeOrb : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString systemInfo READ systemInfo NOTIFY systemInfoChange)
    Q_PROPERTY(QString simplySystemInfo READ simplySystemInfo NOTIFY systemInfoChange)
    Q_PROPERTY(HardwareState pcHardware READ pcHardware NOTIFY pcHardwareChange)
    Q_PROPERTY(SteamState steamState READ steamState NOTIFY steamStateChange)
    Q_PROPERTY(QString vrName READ vrName NOTIFY vrIsConnectChange)
    Q_PROPERTY(bool vrIsConnect READ vrIsConnect NOTIFY vrIsConnectChange)
    Q_PROPERTY(QVariant vrLists READ vrLists NOTIFY vrListsChange)
    Q_PROPERTY(int fpsIndex READ fpsIndex NOTIFY effectChange)
    Q_PROPERTY(bool audioStatus READ audioStatus NOTIFY effectChange)
    Q_PROPERTY(bool tenbitEnc READ tenbitEnc NOTIFY effectChange)
    Q_PROPERTY(bool fullRangeColor READ fullRangeColor NOTIFY effectChange)
    Q_PROPERTY(bool enableHdr READ enableHdr NOTIFY effectChange)
    Q_PROPERTY(int definitionIndex READ definitionIndex NOTIFY effectChange)
    Q_PROPERTY(int encodeType READ encodeType NOTIFY effectChange)
    Q_PROPERTY(int widthIndex READ widthIndex NOTIFY effectChange)
    Q_PROPERTY(int heightIndex READ heightIndex NOTIFY effectChange)
    Q_PROPERTY(int bitRate READ bitRate NOTIFY effectChange)
    Q_PROPERTY(int videoRatio READ videoRatio NOTIFY effectChange)
    Q_PROPERTY(bool haslaunchSteamVR READ haslaunchSteamVR NOTIFY haslaunchSteamVRChange)
    Q_PROPERTY(bool haslaunchSteam READ haslaunchSteam NOTIFY haslaunchSteamChange)
    Q_PROPERTY(bool wired READ wired WRITE setWired NOTIFY wiredChange)
    Q_PROPERTY(bool hasEnumdevices READ hasEnumdevices NOTIFY hasEnumdevicesChange)
    Q_PROPERTY(bool AV1available READ av1Available NOTIFY av1AvailableChanged)
    Q_PROPERTY(bool nvidiaAvailable READ nvidiaAvailable NOTIFY effectChange)

public:
    enum Urls { SteamUrl = 0, UserHelperUrl = 1, SteamHelperUrl = 2 };
    Q_ENUM(Urls)
    enum HardwareState {
        NotCanRun = 0,
        LowHardware = 1,
        AdviceHardware = 2,
        ExcellentHardware = 3
    };
    Q_ENUM(HardwareState)
    enum SteamState { Pass = 0, NoneSteam = 1, NoneSteamVR = 2, SteamVRForbid = 3 };
    Q_ENUM(SteamState)

    // What is stored for the current headset, and what the PC can encode.
    struct Settings
    {
        int definition = 1;
        int fps = 1;
        int encoder = 1;
        bool audio = false;
        bool tenBit = false;
        bool fullRange = false;
        bool hdr = false;
        int bitRate = 50; // Mbit/s
        int scale = 100;  // percent
        bool av1 = false;
        bool nvidia = false;
    };

    FakeOrb();

    QString systemInfo() const { return systemInfo_; }
    QString simplySystemInfo() const { return simplySystemInfo_; }
    // Every look at it counts, as it does for the real one.
    HardwareState pcHardware();
    SteamState steamState() const { return steamState_; }
    QString vrName() const { return vrName_; }
    bool vrIsConnect() const { return vrIsConnect_; }
    QVariant vrLists() { return QVariant::fromValue(&headsets); }
    int fpsIndex() const { return settings_.fps; }
    bool audioStatus() const { return settings_.audio; }
    bool tenbitEnc() const { return settings_.tenBit; }
    bool fullRangeColor() const { return settings_.fullRange; }
    bool enableHdr() const { return settings_.hdr; }
    int definitionIndex() const { return settings_.definition; }
    int encodeType() const { return settings_.encoder; }
    int widthIndex() const { return 2880; }
    int heightIndex() const { return 2656; }
    int bitRate() const { return settings_.bitRate; }
    int videoRatio() const { return settings_.scale; }
    bool av1Available() const { return settings_.av1; }
    bool nvidiaAvailable() const { return settings_.nvidia; }
    bool haslaunchSteamVR() const { return steamVR_; }
    bool haslaunchSteam() const { return steam_; }
    bool wired() const { return wired_; }
    void setWired(bool wired);
    bool hasEnumdevices() const { return enumerated_; }

    // What a test tells it; each also announces the change.
    void becomeSystemInfo(const QString &all, const QString &simple);
    void becomeHardware(HardwareState hardware);
    void becomeSettings(const Settings &settings);
    void becomeSteamState(SteamState state);
    void becomeSteam(bool running);
    void becomeSteamVR(bool running);
    void becomeConnected(bool connected, const QString &vrName = QString());
    void becomeEnumerated(bool enumerated);
    void becomeWired(bool wired);

    FakeHeadsets headsets;
    // Follows what the test tells, as the real one does; may be set as well.
    ConnectionStatus connection;
    std::function<void()> onFeedback; // when feedback is handed in
    QStringList calls;
    // Called with each new line.
    std::function<void(const QString &)> onCall;
    bool hideSelectPage = true;
    // Which headset the controller wants to be connected, if any.
    QString reconnectSerial;
    int hardwareReads = 0;
    // Called with each of them.
    std::function<void()> onHardwareRead;
    bool audioInstalled = true; // the answer of installAudio()
    // What holds the ports; checkPortUsage() announces it when there is any.
    QString portHolders;

signals:
    void systemInfoChange();
    void pcHardwareChange();
    void steamStateChange();
    void vrListsChange();
    void vrIsConnectChange();
    void av1AvailableChanged();
    void showToast(QString tips, int duration = 2000);
    void showPowerTip();
    void closePowerTip();
    void effectChange();
    void closeExe();
    void showMoreHMD();
    void showVrList(bool isConnect, bool hasDisConnect);
    void hasEnumdevicesChange();
    void showNetWorkSetting();
    void showUpdateGPUPage();
    void showUseProtPage(QString names);
    void haslaunchSteamVRChange();
    void haslaunchSteamChange();
    void wiredChange();

public:
    Q_INVOKABLE void gotoWeb(FakeOrb::Urls url);
    Q_INVOKABLE void sendFeecback(QString content, QString id);
    Q_INVOKABLE void setEffects(int definition, int fps, int encodType, bool audiostatus,
                                bool tenbit, bool fullRange, bool Hdr);
    Q_INVOKABLE void launchSteam(bool isVR = false);
    Q_INVOKABLE void connectVR(QString VRname, QString ip, bool vrState = true);
    Q_INVOKABLE void setupNewVersion(); // announces closeExe()
    Q_INVOKABLE void stopSteam();
    Q_INVOKABLE void reportstreamMode(bool wired, bool isSwitch);
    Q_INVOKABLE void openNetworkSetting();
    Q_INVOKABLE bool installAudio();
    Q_INVOKABLE QString trimmedString(QString str);
    Q_INVOKABLE void closeApp();
    Q_INVOKABLE void shutdownADB();
    Q_INVOKABLE void checkPortUsage();
    Q_INVOKABLE void setVideoQuilty(int scale, int bitrate);
    Q_INVOKABLE void setVideoBitRate(int bitrate);
    Q_INVOKABLE bool isHideSelectPage();
    Q_INVOKABLE bool isHasConnectedDevice() const;

private:
    void note(const QString &call);
    void updateConnection();

    QString systemInfo_ = QStringLiteral("[]");
    QString simplySystemInfo_ = QStringLiteral("[]");
    HardwareState hardware_ = NotCanRun;
    Settings settings_;
    SteamState steamState_ = NoneSteam;
    QString vrName_ = zh("星程之光眼镜");
    bool vrIsConnect_ = false;
    bool steam_ = false;
    bool steamVR_ = false;
    bool wired_ = false;
    bool enumerated_ = false;
    bool letGo_ = false; // as it was told with the list
};

// The update checker. It writes into the same list.
class FakeUpdate : public QObject
{
    Q_OBJECT

public:
    explicit FakeUpdate(FakeOrb &orb) : orb_(orb) {}

    bool setupSucceeds = true;

    Q_INVOKABLE bool setup();
    Q_INVOKABLE QString version() { return QStringLiteral("v1.2.3"); }

signals:
    void updateSignal(QString note, bool isForce);
    void processStatus(float val);
    void downExeFinish();

private:
    FakeOrb &orb_;
};
