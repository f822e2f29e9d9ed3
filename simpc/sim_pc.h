// A small simulated Windows PC: what the program can ask of and do to the
// machine it runs on, as a world with a state of its own.
//
// Tests describe a PC in code, let the program loose on it and look at what
// the world is like afterwards and in which order it was touched (journal).
// Demonstrations load it from a scenario file.
#pragma once

#include "simpc/sim_cell.h"
#include "simpc/sim_hardware.h"
#include "simpc/sim_launches.h"
#include "simpc/sim_listener.h"
#include "simpc/sim_ports.h"
#include "simpc/sim_processes.h"
#include "simpc/sim_record.h"
#include "simpc/sim_registry.h"
#include "simpc/sim_timeline.h"
#include "simpc/sim_usb.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

struct SimWaveOut
{
    int channels = 2;
    QString name;
};

// How the system's query for the network category behaves.
enum class SimNetworkQuery {
    Answers,
    Missing, // there is no such program
    Hangs    // runs and never says anything
};

// The world. All members may be called from any thread; when things happen and
// who waits for whom is told in sim_timeline.h.
class SimPc
{
public:
    // Makes this PC the current one until it is destroyed; one at a time.
    explicit SimPc(Clock &clock);
    ~SimPc();

    SimPc(const SimPc &) = delete;
    SimPc &operator=(const SimPc &) = delete;

    // The PC that the program runs on. There must be one.
    static SimPc &current();
    static bool exists();

    SimTimeline timeline;
    // One line for everything that the program did to this PC, in the order in
    // which it did it ("launch ...", "terminate adb.exe", "cell write 0").
    // Questions are not written down.
    SimRecord journal;
    // What this PC did of its own accord ("Steam appears", "power line:
    // offline"), for those who watch a demonstration.
    SimRecord events{&timeline};
    SimRegistry registry{timeline};
    SimProcesses processes{timeline};
    SimPorts ports{timeline}; // a process loses its own when it ends
    SimLaunches launches{timeline, journal};
    SimUsb usb{timeline};
    // What the person in front of the PC chooses in the program: USB (true) or
    // Wi-Fi.
    SimListener<bool> modeChoice{timeline};

    // The folders, joined by ':', in which a command interpreter looks for
    // programs. They are the real machine's; empty: it finds none.
    void setSearchPath(const QString &folders);
    QString searchPath() const;

    // Power line: 0 battery, 1 mains, 255 unknown; nothing: the question fails.
    void setAcLine(std::optional<int> status);
    std::optional<int> acLine() const;

    // From now on the table cannot be read, for the system's reason `error`; 0:
    // for want of memory.
    void failTcpTable(quint32 error);
    std::optional<quint32> tcpTableError() const;

    // The product version of the system, "8.1" for example.
    void setOsVersion(const QString &version);
    QString osVersion() const;
    void setHardware(const SimHardware &hardware);
    SimHardware hardware() const;
    void setTotalMemory(quint64 bytes);
    quint64 totalMemory() const;

    // What the system's network query prints, for example "Private".
    void setNetworkProfileText(const QString &text);
    QString networkProfileText() const;
    void setNetworkQuery(SimNetworkQuery query);
    SimNetworkQuery networkQuery() const;

    // Console commands, by the first word of the command line. The shell script
    // is run in the command's place; nothing: there is no such command. What is
    // run is written into the journal ("command netsh ...").
    void setCommand(const QString &name, const QByteArray &script);
    std::optional<QByteArray> runCommand(const QByteArray &commandLine);

    void setRecordingDevices(const QStringList &names);
    QStringList recordingDevices() const;
    void setWaveOuts(const std::vector<SimWaveOut> &devices);
    std::vector<SimWaveOut> waveOuts() const;

    // The shared-memory cell of this PC. Set one before the program uses it.
    SimCell &cell() const;
    void setCell(std::unique_ptr<SimCell> cell);

private:
    mutable std::mutex mutex_; // guards what follows
    QString searchPath_;
    std::optional<int> acLine_ = 1;
    std::optional<quint32> tcpTableError_;
    QString osVersion_ = QStringLiteral("10");
    SimHardware hardware_;
    QMap<QString, QByteArray> commands_;
    SimNetworkQuery networkQuery_ = SimNetworkQuery::Answers;
    quint64 totalMemory_ = 17179869184ULL - 1;
    QString networkProfile_ = QStringLiteral("NetworkCategory  : Private");
    QStringList recordingDevices_;
    std::vector<SimWaveOut> waveOuts_{{2, QStringLiteral("Speakers")}};
    std::unique_ptr<SimCell> cell_;
};
