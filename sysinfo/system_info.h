// What this PC is: gathered once, then answered from memory.
#pragma once

#include "base/mutex.h"
#include "pc/processes.h"

#include <QByteArray>
#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class QProcess;

// Lives on the GUI thread.
class SystemInfo : public QObject
{
    Q_OBJECT

public:
    // Gathers everything, synchronously; only the network category is asked
    // for in the background.
    explicit SystemInfo(QObject *parent = nullptr);
    ~SystemInfo() override;

    static SystemInfo &instance();

    // The description that goes with every usage event. Any thread.
    QJsonObject toJson() const;

    QString cpuName() const { return cpu_; }
    QString directXText() const { return directX_; }
    QString osText() const { return os_; }
    QString ramText() const { return ram_; }
    // "Private" until the system has answered; then "Public", "Private" or
    // empty.
    QString networkCategory() const { return networkCategory_; }
    // The discrete adapter's name, then the integrated one's, as far as known.
    QStringList gpuNames() const;

    // Remembers the headset's serial; an empty one changes nothing.
    void setDeviceSN(const QString &serial);

    static QString minimumCpu();
    static QString minimumGpu();
    static QString minimumOs();
    static QString minimumRam();
    static QString recommendedCpu();
    static QString recommendedGpu();
    static QString recommendedOs();
    static QString recommendedRam();
    static QString requiredDirectX();

    // The assistant's own version, four numbers (the root's CMakeLists.txt).
    static QString assistantVersion();

    // Whether the first wave-output device is stereo. A true answer is kept.
    bool isAudioOutputSupported();
    // Whether the virtual audio cable's recording end is there.
    static bool hasVirtualCable();
    // Is told whose valid signature the installer has, before the rights are asked for;
    // empty: nobody's, and it is not started.
    using TellSigner = std::function<void(const QString &signer)>;
    // Starts the cable's installer, which lies below `folder`, with
    // administrator rights, if somebody has signed it. Does not wait for it. A missing
    // one, and one that somebody writes to, shows only in the log.
    static void installVirtualCable(const QString &folder, const TellSigner &tell = {});

    // Processes by executable name, compared with letter case.
    static bool isProcessRunning(const QString &name);
    // The same for several questions to one snapshot, which on a PC with hundreds of
    // processes takes milliseconds.
    static bool isAmong(const std::vector<processes::Entry> &running, const QString &name);
    static bool isAnyProcessRunning(const QStringList &names);
    static QString processPath(const QString &name);
    static QString modulePathOf(quint32 pid);
    // Ends every process of these names; waits for each, up to a minute, and as
    // long as `goesOn`, asked each quarter of a second, says.
    static void killProcesses(const QStringList &names, const std::function<bool()> &goesOn = {});

    // The executable names of the processes that hold one of the TCP ports.
    static QStringList processesUsingPorts(const QList<quint16> &ports);

    // The versions of the NVIDIA drivers that the system knows for its display
    // devices, and whether none of them is new enough.
    static QStringList nvidiaDriverVersions();
    static bool needGpuDriverUpdate();

    // Runs a console command without a window and returns all that it wrote to
    // its outputs, as UTF-8. Blocks until nobody can write to them any more;
    // empty when it could not be started. Any thread.
    static QString runCommand(const QByteArray &commandLine);

    // Decisions of the probe, apart from the questions.
    static QString ramTextOf(quint64 totalPhysicalBytes);
    static QString networkCategoryOf(const QString &queryOutput);

private:
    void probe();
    void readNetworkCategory();

    QProcess *powershellProcess_;
    QString machineGuid_;
    QString integratedGraphics_;
    QString discreteGraphics_;
    QString cpu_;
    QString os_;
    QString ram_;
    QString vram_;
    QString hostName_;
    QString directX_;
    mutable Mutex deviceSNMutex_;
    QString deviceSN_ GUARDED_BY(deviceSNMutex_); // changes later, so it has a lock
    QString networkCategory_;
    QString version_;
    bool audioSupported_ = false;
};
