// Scenarios: a simulated PC described in a JSON file (simpc/README.md lists
// every key), for demonstrations and end-to-end tests.
#pragma once

#include "simpc/adb_world.h"
#include "simpc/scenario_files.h"
#include "simpc/scenario_pc.h"
#include "simpc/server_plan.h"
#include "simpc/steam_world.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

class SimPc;

struct TimelineEntry
{
    int at = 0; // ms from the beginning
    PcChanges changes;
};

struct Scenario
{
    QString name;  // of the file, without ".json"
    QString title; // what a person sees, one line
    PcChanges beginning;
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

// All keys of a scenario file, as the README has them.
QString keysText();

} // namespace scenario
