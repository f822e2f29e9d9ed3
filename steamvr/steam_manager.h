// Steam and SteamVR on this PC: where they are, whether they run, how to start,
// stop and restart them.
#pragma once

#include "base/clock.h"
#include "base/long_wait.h"
#include "base/mutex.h"
#include "pc/processes.h"
#include "pc/shared_cell.h"
#include "steamvr/driver_registration.h"
#include "steamvr/launch_failure.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class ConfigManager;

// Lives on the GUI thread and blocks it for seconds while SteamVR stops.
class SteamManager : public QObject
{
    Q_OBJECT

public:
    // Runs its argument on another thread. False when there is none to be had, and it
    // is not run.
    using Pool = std::function<bool(std::function<void()>)>;

    // What the object needs; everything outlives it.
    struct Dependencies
    {
        Clock &clock;
        ConfigManager &config;
        QString applicationDir = {}; // registered as the streaming driver's folder
        QString homeDir = {};        // of the user, for the OpenVR paths file
        Pool pool = {};
        // Of waits that last, which block the GUI thread: "steamvr" for SteamVR that
        // does not close, "cell" for the shared cell that another program holds.
        long_wait::Tell tell = {};
    };

    explicit SteamManager(Dependencies dependencies);
    ~SteamManager() override;

    static SteamManager &instance();

    // Whether Steam was found when this object was made.
    bool steamInstalled() const { return steamInstalled_; }
    QString steamInstallPath() const;

    // Steam counts as running after four checks in a row found it, and at once
    // when it ran before this program.
    bool hasLaunchSteam();
    // SteamVR counts as stopped after two checks in a row missed it.
    bool hasLaunchSteamVR();
    // The same of processes that were listed for several questions.
    bool hasLaunchSteam(const std::vector<processes::Entry> &processes);
    bool hasLaunchSteamVR(const std::vector<processes::Entry> &processes);

    // Launches Steam without waiting for it; any thread.
    void startSteam();
    // The launch itself: blocks until steam.exe has ended, 10 s at most.
    bool launchSteamExe();
    // Why the last of these did not start Steam; nothing when it did. Any thread.
    std::optional<LaunchFailure> steamFailure() const;

    // Start and stop run on the object's thread: called from another thread
    // they return at once and are carried out there later.
    Q_INVOKABLE void startSteamVR();
    Q_INVOKABLE void stopSteamVR();
    // Why the last stop could not ask SteamVR to close; nothing when it could, or
    // had nothing to stop. Any thread.
    std::optional<LaunchFailure> stopFailure() const;
    // Any thread; sleeps 1.5 s on it.
    void restartSteamVR();
    // The user's session ends: the registration goes, SteamVR is the system's affair,
    // and from now on it is neither started nor stopped from here. Takes three seconds
    // at most, when somebody holds OpenVR's list. On the object's thread.
    void leaveToSystem();

    // Where SteamVR's start-up program lies, below SteamVR's folder.
    void setVrstartupPath(const QString &steamVRPath);
    // Whether the firewall has the streaming's inbound rule for the server of
    // the SteamVR in this folder, letter case included. Blocks while the system
    // is asked; any thread.
    bool hasFirewallRule(const QString &steamVRPath) const;

    // The serial that is stored as the last one on a restart. Any thread.
    void setRestartSerial(const QString &serial);

signals:
    void steamAppChange(int sec, QString appName);
    void showToast(QString tips);
    // SteamVR is started all the same, and knows nothing of us: the driver could
    // not be registered. On the object's thread.
    void driverNotRegistered(openvr_paths::Problem problem);
    // We ended SteamVR, and whatever of it ran is gone; or told it to start,
    // and nothing of it runs yet. On the object's thread.
    void steamVRStopped();
    void steamVRStarted();

private:
    bool isSteamInstalled() const;
    void launchWorker();
    void noteNoThread();
    void finishTakingBack();
    bool shutdownViaVrstartup();
    void closeSteamVR();
    bool waitsOn(long_wait::LongWait &wait);
    void emptyCell();

    Dependencies dependencies_;
    bool steamInstalled_ = false;
    int timerId_ = 0;
    bool left_ = false; // to the system, which ends the session
    Mutex countMutex_;
    bool steamRunning_ GUARDED_BY(countMutex_) = false;
    int steamSeenCount_ GUARDED_BY(countMutex_) = 4;
    int steamVRMissCount_ GUARDED_BY(countMutex_) = 0;
    QString vrstartupPath_;
    Mutex startMutex_; // taken before countMutex_
    QString restartSerial_ GUARDED_BY(startMutex_);
    bool starting_ GUARDED_BY(startMutex_) = false;
    mutable Mutex failureMutex_;
    std::optional<LaunchFailure> steamFailure_ GUARDED_BY(failureMutex_);
    std::optional<LaunchFailure> stopFailure_ GUARDED_BY(failureMutex_);
    DriverRegistration registration_;
    SharedCell cell_;
};
