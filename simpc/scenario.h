// Scenarios: a simulated PC described in a JSON file (simpc/README.md lists
// every key), for demonstrations and end-to-end tests.
#pragma once

#include "simpc/adb_world.h"
#include "simpc/server_plan.h"
#include "simpc/sim_pc.h"
#include "simpc/steam_world.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

// A process of a scenario, and the TCP ports that it holds.
struct StartingProcess
{
    QString name;
    QString path;
    std::vector<quint16> ports;
};

// What a scenario says about the state of the PC, at the beginning or at one
// moment; what it does not mention stays as it is.
struct PcChange
{
    // The inner value as in SimPc::setAcLine().
    std::optional<std::optional<int>> acLine;
    std::optional<QStringList> network; // a category for each connection
    std::optional<QStringList> recordingDevices;
    std::optional<std::vector<SimWaveOut>> waveOuts;
    std::optional<std::vector<SimHeadset>> cable;
    std::optional<bool> wired; // what the person chooses
    std::vector<StartingProcess> starting;
    QStringList ending;
};

struct TimelineEntry
{
    int at = 0; // ms from the beginning
    PcChange change;
};

struct RegistryValue
{
    QString key;
    QString name;
    QString text;
};

// A file that is there before the program starts.
struct ScenarioFile
{
    enum Place { Home, Work };
    Place place = Work;
    QString path; // relative to the place
    bool exists = true;
    QByteArray content;
};

struct Scenario
{
    QString name;  // of the file, without ".json"
    QString title; // what a person sees, one line
    std::vector<RegistryValue> registry;
    quint64 memory = 0; // bytes
    QString osVersion;
    SimHardware hardware;
    SimNetworkQuery networkQuery = SimNetworkQuery::Answers;
    QMap<QString, QByteArray> commands; // names and scripts of SimPc::setCommand()
    PcChange beginning;
    SteamOptions steam;
    ServerPlan server;
    AdbPlan adb;
    QString cloud; // what the stand-in cloud answers; "absent": nobody is there
    std::vector<TimelineEntry> timeline;
    std::vector<ScenarioFile> files;
};

namespace scenario {

// The scenarios that are compiled in, in alphabetical order.
QStringList names();

// Loads a compiled-in scenario by its name, with or without ".json", or else a
// file by its path. On failure `error` says why in a sentence and the result
// is worth nothing; on success `error` is empty.
Scenario load(const QString &nameOrPath, QString *error);

// Turns the text of a scenario file into a scenario; errors as above.
Scenario parse(const QByteArray &text, const QString &name, QString *error);

// Makes `pc` the PC of the scenario, with Steam on it, and plans what happens
// to it from now on.
void build(const Scenario &scenario, SimPc &pc);

} // namespace scenario
