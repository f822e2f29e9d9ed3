#include "simpc/scenario.h"

#include "simpc/scenario_keys.h"
#include "simpc/sim_pc.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>

// The macro has to stand outside any namespace.
static void initScenarioResources()
{
    Q_INIT_RESOURCE(simpc);
}

namespace {

const QString resourceFolder = QStringLiteral(":/simpc/scenarios");

} // namespace

Scenario scenario::parse(const QByteArray &text, const QString &name, QString *error)
{
    error->clear();
    Scenario scenario;
    scenario.name = name;
    const JsonDocument json = parseJson(text);
    if (!json.ok()) {
        *error = QStringLiteral("not JSON at byte %1: %2")
                     .arg(json.error.offset)
                     .arg(json.error.errorString());
        return scenario;
    }
    if (!json.document.isObject()) {
        *error = QStringLiteral("a scenario is a JSON object");
        return scenario;
    }
    ObjectReader root(json.document.object(), QString(), error);
    for (const ScenarioKey &key : scenarioKeys())
        key.read(root, json, &scenario);
    root.done();
    return scenario;
}

QStringList scenario::names()
{
    initScenarioResources();
    QStringList names;
    for (const QString &file : QDir(resourceFolder).entryList(QDir::Files, QDir::Name))
        names.append(QFileInfo(file).completeBaseName());
    return names;
}

Scenario scenario::load(const QString &nameOrPath, QString *error)
{
    initScenarioResources();
    const QString suffix = QStringLiteral(".json");
    QString name = nameOrPath;
    if (name.endsWith(suffix))
        name.chop(suffix.size());
    const QString compiledIn = resourceFolder + '/' + name + suffix;
    const bool isCompiledIn = !name.contains('/') && QFile::exists(compiledIn);
    QFile file(isCompiledIn ? compiledIn : nameOrPath);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("no scenario \"%1\", neither a file (%2) nor one of: %3")
                     .arg(nameOrPath, file.errorString(), names().join(", "));
        return {};
    }
    Scenario scenario = parse(file.readAll(), QFileInfo(file).completeBaseName(), error);
    if (!error->isEmpty())
        error->prepend(QStringLiteral("scenario %1: ").arg(nameOrPath));
    return scenario;
}

void scenario::build(const Scenario &scenario, SimPc &pc)
{
    // The beginning is no news; every later change is.
    for (const PcChange &change : scenario.beginning)
        change(pc, [](const QString &) {});
    installSteam(pc, scenario.steam);
    for (const TimelineEntry &entry : scenario.timeline) {
        pc.timeline.after(entry.at, [&pc, changes = entry.changes] {
            for (const PcChange &change : changes)
                change(pc, [&pc](const QString &event) { pc.events.add(event); });
        });
    }
}
