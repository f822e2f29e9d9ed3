// The one object through which the user interface sees and drives the program.
#pragma once

#include "base/mutex.h"
#include "config/link_kind.h"
#include "controller/usage_events.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>

class CheckModel;
class CheckRunner;
class ConnectionFlow;
class ConnectionStages;
class ConnectionStatus;
class ConnectionTracker;
class FeedbackStatus;
class LinkMode;
class OrbDependencies;
class PcCheck;
class Poll;
class SteamStarter;
class SteamWatch;
class StreamingSettings;
class UnwrittenFiles;
class UsbHeadset;
class VRListModel;
struct SettingsChoice;

namespace checks {
struct Action;
}

// A thin face for QML: what it does is done by the parts it owns, each of
// which can be tested by itself. The order of properties, signals and methods
// is part of the contract with the pages.
//
// Lives on the GUI thread and blocks it on purpose where the parts say so.
class ORBManager : public QObject
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
    Q_PROPERTY(bool wired READ wired WRITE setWiredOrWireless NOTIFY wiredChange)
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

    explicit ORBManager(std::unique_ptr<OrbDependencies> dependencies, QObject *parent = nullptr);
    // Stops SteamVR and writes the settings.
    ~ORBManager() override;

    QString systemInfo() const;
    QString simplySystemInfo() const;
    // Decides anew with every read, and reports that.
    HardwareState pcHardware();
    SteamState steamState() const;
    QString vrName() const;
    bool vrIsConnect() const;
    QVariant vrLists() const;
    int fpsIndex() const;
    bool audioStatus() const;
    bool tenbitEnc() const;
    bool fullRangeColor() const;
    bool enableHdr() const;
    int definitionIndex() const;
    int encodeType() const;
    int widthIndex() const;
    int heightIndex() const;
    int bitRate() const;
    int videoRatio() const;
    bool haslaunchSteamVR() const;
    bool haslaunchSteam() const;
    bool wired() const;
    bool hasEnumdevices() const;
    bool av1Available() const;
    bool nvidiaAvailable() const;

    void setWiredOrWireless(bool wired);

    // The user's session ends: takes back what we changed and writes the settings, and
    // leaves SteamVR to the system. The process ends soon after.
    void endSession();

    // Where the connection stands, and how far it has come, for whoever wants
    // to show it.
    ConnectionStatus &status() const { return *status_; }
    const ConnectionStages &stages() const { return *stages_; }
    // Who says what could not be written, and what has become of the last feedback;
    // they live as long as this object.
    UnwrittenFiles &unwritten() const { return *unwritten_; }
    FeedbackStatus &feedback() const { return *feedback_; }
    // What stands in the way of it; lives as long as this object.
    CheckModel &findings();

signals:
    void systemInfoChange();
    void pcHardwareChange();
    void steamStateChange();
    void vrListsChange();
    void vrIsConnectChange();
    void handleEvent();
    void sendMsg();
    void av1AvailableChanged();
    void widthIndexChanged();
    void heightIndexChanged();
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
    void connectVRSignal();
    void wiredChange();

public:
    Q_INVOKABLE void gotoWeb(ORBManager::Urls url);
    Q_INVOKABLE void sendFeecback(QString content, QString id);
    Q_INVOKABLE void setEffects(int definition, int fps, int encodType, bool audiostatus,
                                bool tenbit, bool fullRange, bool Hdr);
    Q_INVOKABLE void launchSteam(bool isVR = false);
    Q_INVOKABLE void connectVR(QString VRname, QString ip, bool vrState = true);
    Q_INVOKABLE void setupNewVersion();
    Q_INVOKABLE void stopSteam();
    Q_INVOKABLE bool isHasConnectedDevice();
    Q_INVOKABLE void reportstreamMode(bool wired, bool isSwitch);
    Q_INVOKABLE void openNetworkSetting();
    Q_INVOKABLE bool installAudio();
    Q_INVOKABLE QString trimmedString(QString str);
    Q_INVOKABLE void closeApp();
    Q_INVOKABLE void shutdownADB();
    Q_INVOKABLE void checkPortUsage();
    Q_INVOKABLE bool isD2();
    Q_INVOKABLE void setVideoQuilty(int scale, int bitrate);
    Q_INVOKABLE void setVideoBitRate(int bitrate);
    Q_INVOKABLE bool isHideSelectPage();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void watchWriting();
    void storeRecentHeadsets();
    void captureStartSettings();
    void makeParts();
    void connectParts();
    void startRun(const SettingsChoice &choice, LinkKind link);
    void checkSystem();
    void startChecks();
    void storeSettings();
    void carryOut(const checks::Action &action);
    void onUsbAttached(const QString &serial);
    void onUsbDetached();
    void onUsbUnreachable();

    std::unique_ptr<OrbDependencies> deps_;
    QDateTime startTime_;
    Mutex switchLock_; // Held while SteamVR is stopped and the files are written.
    UsageEvents events_;
    std::unique_ptr<PcCheck> pc_;
    UnwrittenFiles *unwritten_ = nullptr;
    FeedbackStatus *feedback_ = nullptr;
    VRListModel *model_ = nullptr;
    ConnectionStages *stages_ = nullptr;
    ConnectionStatus *status_ = nullptr;
    ConnectionTracker *tracker_ = nullptr;
    ConnectionFlow *flow_ = nullptr;
    SteamWatch *steamWatch_ = nullptr;
    SteamStarter *steamStarter_ = nullptr;
    CheckRunner *checks_ = nullptr;
    UsbHeadset *usb_ = nullptr;
    StreamingSettings *settings_ = nullptr;
    LinkMode *mode_ = nullptr;
    Poll *poll_ = nullptr;
    int pollTimer_ = 0;
    bool polling_ = false;
    bool modeChosen_ = false;
    bool recentHeld_ = false; // the known headsets could not be read
};
