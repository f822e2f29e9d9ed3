// The simulated PC of a running program: keeps it going by itself and runs the
// streaming server as a process of its own.
#pragma once

#include "simpc/scenario.h"
#include "simpc/sim_pc.h"

#include <QString>
#include <QStringList>

#include <memory>

// What the environment of the process says about the simulated PC.
struct SimSettings
{
    QString scenario = QStringLiteral("one-headset"); // SIMPC_SCENARIO
    double speed = 1;      // SIMPC_SPEED: how many times as fast as real time
    QString serverProgram; // SIMPC_SERVER_PROGRAM; empty: beside the program itself
    QString serverLog;     // SIMPC_SERVER_LOG: file for what the server sends and gets
    QString adbFolder;     // SIMPC_ADB: folder with adb; empty: the stand-in's
    QString adbState;      // ADB_SIM_FOLDER: what the stand-in reads; empty: one of its own
    quint16 adbPort = 0;   // ANDROID_ADB_SERVER_PORT; 0: a free one
    QString journal;       // SIMPC_JOURNAL: file for the journal and the events

    // The variables; `error` says in a sentence when one of them makes no
    // sense, and is empty otherwise.
    static SimSettings fromEnvironment(QString *error);
};

// Made before anything that asks the PC; it must outlive all that does. The PC
// is there from the constructor on, with the scenario's time running, but until
// start() things happen only when somebody asks.
class SimHost
{
public:
    struct Options
    {
        Clock *clock = &Clock::system();
        SimSettings settings;
        QString homeDir; // empty: QDir::homePath()
        // Which "external_drivers" entry makes SteamVR load the driver; empty:
        // the folder of the running program.
        QString driverFolder;
        QStringList serverArguments; // in addition
    };

    // The server is told the speed in `settings`; making the clock run so fast
    // is the caller's task (Clock::setSystemSpeed()). Any thread.
    SimHost(const Scenario &scenario, const Options &options);
    ~SimHost(); // as stop()

    SimHost(const SimHost &) = delete;
    SimHost &operator=(const SimHost &) = delete;

    SimPc &pc();

    // Lets things happen by themselves, on a thread that sleeps until the next
    // one is due. Needs the application object.
    void start();

    // Ends the streaming server and the thread, and waits for both. The PC goes
    // on answering, but no server comes any more. For the end of main(), while
    // others may still ask the PC.
    void stop();

    // The running streaming server's process; 0 when none runs. Any thread.
    qint64 serverPid() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};
