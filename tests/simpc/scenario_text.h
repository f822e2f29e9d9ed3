// Scenarios that a test writes down, and PCs of them.
#pragma once

#include "base/manual_clock.h"
#include "simpc/scenario.h"
#include "simpc/sim_pc.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

// A scenario with a title and these further members.
inline Scenario parsed(const QByteArray &members, QString *error)
{
    return scenario::parse("{\"title\":\"t\"" + QByteArray(members.isEmpty() ? "" : ",") + members +
                               '}',
                           "test", error);
}

// The same, without a mistake.
inline Scenario parsed(const QByteArray &members)
{
    QString error;
    const Scenario scenario = parsed(members, &error);
    if (!error.isEmpty())
        qFatal("%s", qPrintable(error));
    return scenario;
}

// The file of a scenario whose path ends so.
inline const ScenarioFile &fileOf(const Scenario &scenario, const QString &name)
{
    for (const ScenarioFile &file : scenario.files) {
        if (file.path.endsWith(name))
            return file;
    }
    qFatal("no file %s", qPrintable(name));
}

// The PC of a scenario.
struct ScenarioPc
{
    explicit ScenarioPc(const Scenario &scenario) { scenario::build(scenario, pc); }

    ManualClock clock;
    SimPc pc{clock};
};
