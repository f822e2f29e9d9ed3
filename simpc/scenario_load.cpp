#include "simpc/scenario.h"

#include "base/json_document.h"
#include "simpc/object_reader.h"
#include "simpc/scenario_hardware.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

// The macro has to stand outside any namespace.
static void initScenarioResources()
{
    Q_INIT_RESOURCE(simpc);
}

namespace {

constexpr int headsetPort = 9943; // of this PC, and of the headset
const QString resourceFolder = QStringLiteral(":/simpc/scenarios");
const QString windowsKey =
    QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion");
const QString cryptographyKey =
    QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Cryptography");
const QString processorKey =
    QStringLiteral("HKEY_LOCAL_MACHINE\\HARDWARE\\DESCRIPTION\\System\\CentralProcessor\\0");

struct SeededName
{
    const char *name; // key in a scenario and name of the default's resource
    ScenarioFile::Place place;
    const char *path;
};

constexpr SeededName seededNames[] = {
    {"session.json", ScenarioFile::Work, "session.json"},
    {"set.json", ScenarioFile::Home, ".local/share/KOLM/KOLM_Streaming_Assistant/set.json"},
    {"setting.inf", ScenarioFile::Home, ".local/share/KOLM/KOLM_Streaming_Assistant/setting.inf"},
    {"openvrpaths.vrpath", ScenarioFile::Home, "AppData/Local/openvr/openvrpaths.vrpath"},
    {"compare.json", ScenarioFile::Work, "compare.json"},
};

std::vector<SimWaveOut> readWaveOuts(ObjectReader &reader, const QString &key)
{
    std::vector<SimWaveOut> devices;
    for (ObjectReader &entry : reader.objects(key)) {
        SimWaveOut device;
        device.name = entry.text(QStringLiteral("name"), device.name);
        device.channels = static_cast<int>(entry.number(QStringLiteral("channels"), 0, 2));
        entry.done();
        devices.push_back(device);
    }
    return devices;
}

std::vector<SimHeadset> readCable(ObjectReader &reader, const QString &key)
{
    std::vector<SimHeadset> cable;
    if (!reader.value(key).isArray() || !reader.value(key).toArray().first().isObject()) {
        for (const QString &serial : reader.texts(key, {}))
            cable.push_back({serial});
        return cable;
    }
    for (ObjectReader &entry : reader.objects(key)) {
        SimHeadset headset;
        headset.serial = entry.text(QStringLiteral("serial"), QString());
        headset.state = entry.text(QStringLiteral("state"), headset.state);
        if (headset.serial.isEmpty())
            entry.fail(QStringLiteral("serial"), QStringLiteral("is missing"));
        entry.done();
        cable.push_back(headset);
    }
    return cable;
}

PcChange readChange(ObjectReader &reader)
{
    PcChange change;
    const QString acLine = QStringLiteral("acLine");
    if (reader.has(acLine)) {
        const std::optional<int> status[] = {1, 0, 255, std::nullopt};
        const int word = reader.choice(acLine, {"online", "offline", "unknown", "fails"}, 0);
        change.acLine = status[qMax(0, word)];
    }
    const QString network = QStringLiteral("network");
    if (reader.has(network))
        change.network = reader.texts(network, {});
    const QString recording = QStringLiteral("recordingDevices");
    if (reader.has(recording))
        change.recordingDevices = reader.texts(recording, {});
    const QString waveOuts = QStringLiteral("waveOuts");
    if (reader.has(waveOuts))
        change.waveOuts = readWaveOuts(reader, waveOuts);
    const QString cable = QStringLiteral("usb");
    if (reader.has(cable))
        change.cable = readCable(reader, cable);
    const QString start = QStringLiteral("start");
    for (ObjectReader &entry : reader.objects(start)) {
        StartingProcess process;
        process.name = entry.text(QStringLiteral("name"), QString());
        process.path = entry.text(QStringLiteral("path"), QString());
        for (const qint64 port : entry.numbers(QStringLiteral("ports"), 1, 65535))
            process.ports.push_back(static_cast<quint16>(port));
        if (process.name.isEmpty())
            entry.fail(QStringLiteral("name"), QStringLiteral("is missing"));
        entry.done();
        change.starting.push_back(process);
    }
    change.ending = reader.texts(QStringLiteral("end"), {});
    return change;
}

void readPc(ObjectReader reader, Scenario *scenario)
{
    const auto registryText = [&](const QString &word, const QString &key, const QString &name,
                                  const QString &otherwise) {
        scenario->registry.push_back({key, name, reader.text(word, otherwise)});
    };
    registryText(QStringLiteral("os"), windowsKey, QStringLiteral("ProductName"),
                 QStringLiteral("Windows 10 Pro"));
    registryText(QStringLiteral("machineGuid"), cryptographyKey, QStringLiteral("MachineGuid"),
                 QStringLiteral("5f1c2a90-0000-4000-8000-51b0cafe0001"));
    registryText(QStringLiteral("cpu"), processorKey, QStringLiteral("ProcessorNameString"),
                 QStringLiteral("Intel(R) Core(TM) i7-9700 CPU @ 3.00GHz"));
    ObjectReader keys = reader.object(QStringLiteral("registry"));
    for (const QString &key : keys.freeKeys()) {
        ObjectReader values = keys.object(key);
        for (const QString &name : values.freeKeys())
            scenario->registry.push_back({key, name, values.text(name, QString())});
    }
    scenario::readHardware(reader, scenario);
    scenario->beginning = readChange(reader);
    reader.done();
}

void readSteam(ObjectReader steam, ObjectReader steamVr, SteamOptions *options)
{
    const QString installed = QStringLiteral("installed");
    const QString running = QStringLiteral("running");
    const QString path = QStringLiteral("path");
    const QString appears = QStringLiteral("appearsAfter");

    options->steamInstalled = steam.flag(installed, options->steamInstalled);
    options->steamRunning = steam.flag(running, options->steamRunning);
    options->steamPath = steam.text(path, options->steamPath);
    options->steamListed = steam.flag(QStringLiteral("listed"), options->steamListed);
    options->steamAppears = steam.milliseconds(appears, options->steamAppears);
    const QString launcher = QStringLiteral("launcherEndsAfter");
    const bool never = steam.value(launcher).toString() == QStringLiteral("never");
    options->launcherEnds = never ? -1 : steam.milliseconds(launcher, options->launcherEnds);
    if (options->steamRunning && !options->steamInstalled)
        steam.fail(running, QStringLiteral("needs Steam to be installed"));
    steam.done();

    options->steamVrInstalled = steamVr.flag(installed, options->steamVrInstalled);
    options->steamVrRunning = steamVr.flag(running, options->steamVrRunning);
    options->steamVrPath = steamVr.text(path, options->steamVrPath);
    options->steamVrAppears = steamVr.milliseconds(appears, options->steamVrAppears);
    options->steamVrGap = steamVr.milliseconds(QStringLiteral("processGap"), options->steamVrGap);
    options->driverLoads =
        steamVr.milliseconds(QStringLiteral("driverLoadsAfter"), options->driverLoads);
    options->steamVrCloses =
        steamVr.milliseconds(QStringLiteral("closesAfter"), options->steamVrCloses);
    options->closingGap = steamVr.milliseconds(QStringLiteral("closingGap"), options->closingGap);
    if (options->steamVrRunning && !options->steamVrInstalled)
        steamVr.fail(running, QStringLiteral("needs SteamVR to be installed"));
    steamVr.done();
}

PlannedHeadset readHeadset(ObjectReader &reader)
{
    const QString drops = QStringLiteral("dropsAt");
    const QString returns = QStringLiteral("returnsAt");
    PlannedHeadset headset;
    headset.serial = reader.text(QStringLiteral("serial"), QString());
    headset.address = reader.text(QStringLiteral("address"), QString());
    headset.joins = reader.milliseconds(QStringLiteral("joinsAt"), headset.joins);
    headset.drops = reader.milliseconds(drops, headset.drops);
    headset.returns = reader.milliseconds(returns, headset.returns);
    if (headset.serial.isEmpty())
        reader.fail(QStringLiteral("serial"), QStringLiteral("is missing"));
    if (headset.address.isEmpty())
        reader.fail(QStringLiteral("address"), QStringLiteral("is missing"));
    if (headset.drops >= 0 && headset.drops <= headset.joins)
        reader.fail(drops, QStringLiteral("must be later than \"joinsAt\""));
    if (headset.returns >= 0 && (headset.drops < 0 || headset.returns <= headset.drops))
        reader.fail(returns, QStringLiteral("must be later than a \"dropsAt\""));
    reader.done();
    return headset;
}

void readServer(ObjectReader &root, ServerPlan *plan)
{
    const QString key = QStringLiteral("streamingServer");
    plan->headsets = {{QStringLiteral("D3SIM00001"), QStringLiteral("192.168.1.31")}};
    if (!root.value(key).isObject()) {
        const int word = root.choice(key, {"sim", "external", "never"}, 0);
        const ServerPlan::Kind kinds[] = {ServerPlan::Program, ServerPlan::External,
                                          ServerPlan::Never};
        plan->kind = kinds[qMax(0, word)];
        return;
    }
    ObjectReader reader = root.object(key);
    const QString headsets = QStringLiteral("headsets");
    if (reader.has(headsets)) {
        plan->headsets.clear();
        for (ObjectReader &entry : reader.objects(headsets))
            plan->headsets.push_back(readHeadset(entry));
    }
    plan->linkDelay = reader.milliseconds(QStringLiteral("linkDelay"), plan->linkDelay);
    plan->restart = reader.milliseconds(QStringLiteral("restartAt"), plan->restart);
    const QString usb = QStringLiteral("usb");
    if (reader.value(usb).toString() == QLatin1String("adb"))
        plan->usbPort = headsetPort;
    else
        plan->usb = reader.flag(usb, plan->usb);
    plan->hello = reader.flag(QStringLiteral("hello"), plan->hello);
    plan->deviceIdFirst = reader.flag(QStringLiteral("serialFirst"), plan->deviceIdFirst);
    plan->deviceId = reader.text(QStringLiteral("deviceId"), plan->deviceId);
    plan->split = static_cast<int>(reader.number(QStringLiteral("split"), 1, plan->split));
    plan->join = static_cast<int>(reader.number(QStringLiteral("join"), 1, plan->join));
    reader.done();
}

void readAdb(ObjectReader &root, AdbPlan *plan)
{
    const QString key = QStringLiteral("adb");
    if (!root.value(key).isObject()) {
        plan->onPath = root.choice(key, {"sim", "none"}, 0) == 0;
        return;
    }
    ObjectReader reader = root.object(key);
    plan->onPath = reader.flag(QStringLiteral("onPath"), plan->onPath);
    plan->hangs = reader.flag(QStringLiteral("hangs"), plan->hangs);
    plan->runsFrom = reader.text(QStringLiteral("runsFrom"), plan->runsFrom);
    reader.done();
}

void readTimeline(ObjectReader &root, std::vector<TimelineEntry> *timeline)
{
    const QString seconds = QStringLiteral("seconds");
    for (ObjectReader &reader : root.objects(QStringLiteral("at"))) {
        TimelineEntry entry;
        if (!reader.has(seconds))
            reader.fail(seconds, QStringLiteral("is missing"));
        entry.at = reader.milliseconds(seconds, 0);
        entry.change = readChange(reader);
        const QString person = QStringLiteral("personChooses");
        if (reader.has(person))
            entry.change.wired = reader.choice(person, {"usb", "wifi"}, 0) == 0;
        reader.done();
        timeline->push_back(entry);
    }
}

QByteArray resource(const QString &path)
{
    initScenarioResources();
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void readFiles(ObjectReader reader, const JsonDocument &whole, std::vector<ScenarioFile> *files)
{
    for (const SeededName &seeded : seededNames) {
        const QString name = QString::fromLatin1(seeded.name);
        ScenarioFile file;
        file.place = seeded.place;
        file.path = QString::fromLatin1(seeded.path);
        const QJsonValue value = reader.value(name);
        if (value.isUndefined()) {
            file.content = resource(QStringLiteral(":/simpc/files/") + name);
        } else if (value.isNull()) {
            file.exists = false;
        } else if (value.isString()) {
            file.content = value.toString().toUtf8();
        } else if (value.isObject()) {
            // The numbers come out as they stand in the scenario file.
            JsonDocument document = whole;
            document.document = QJsonDocument(value.toObject());
            file.content = toIndented(document);
        } else {
            reader.fail(name, QStringLiteral("must be an object, a text or null"));
        }
        files->push_back(file);
    }
    reader.done();
}

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
    scenario.title = root.text(QStringLiteral("title"), QString());
    if (scenario.title.isEmpty())
        root.fail(QStringLiteral("title"), QStringLiteral("is missing"));
    readPc(root.object(QStringLiteral("pc")), &scenario);
    readSteam(root.object(QStringLiteral("steam")), root.object(QStringLiteral("steamVR")),
              &scenario.steam);
    readServer(root, &scenario.server);
    readAdb(root, &scenario.adb);
    scenario.steam.setsCell = scenario.server.kind == ServerPlan::External;
    scenario.cloud = root.text(QStringLiteral("cloud"), QStringLiteral("normal"));
    readTimeline(root, &scenario.timeline);
    readFiles(root.object(QStringLiteral("files")), json, &scenario.files);
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
