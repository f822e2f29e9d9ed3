#include "simpc/scenario_keys.h"

#include "simpc/scenario_programs.h"

namespace {

const QString seconds = QStringLiteral("seconds");

void takeTitle(ObjectReader &root, const JsonDocument &, Scenario *scenario)
{
    scenario->title = kinds::textNotEmpty().read(root, QStringLiteral("title"));
}

void takePc(ObjectReader &root, const JsonDocument &, Scenario *scenario)
{
    scenario->beginning = scenario::readBeginning(root.object(QStringLiteral("pc")));
}

void takeSteam(ObjectReader &root, const JsonDocument &, Scenario *scenario)
{
    ObjectReader steam = root.object(QStringLiteral("steam"));
    scenario::steamKeys().read(steam, &scenario->steam);
}

void takeSteamVr(ObjectReader &root, const JsonDocument &, Scenario *scenario)
{
    ObjectReader steamVr = root.object(QStringLiteral("steamVR"));
    scenario::steamVrKeys().read(steamVr, &scenario->steam);
}

void takeServer(ObjectReader &root, const JsonDocument &, Scenario *scenario)
{
    scenario->server = scenario::readServer(root, QStringLiteral("streamingServer"));
    scenario->steam.setsCell = scenario->server.kind == ServerPlan::External;
}

void takeAdb(ObjectReader &root, const JsonDocument &, Scenario *scenario)
{
    scenario->adb = scenario::readAdb(root, QStringLiteral("adb"));
}

void takeCloud(ObjectReader &root, const JsonDocument &, Scenario *scenario)
{
    scenario->cloud = root.text(QStringLiteral("cloud"), QStringLiteral("normal"));
}

void takeTimeline(ObjectReader &root, const JsonDocument &, Scenario *scenario)
{
    for (ObjectReader &reader : root.objects(QStringLiteral("at"))) {
        TimelineEntry entry;
        if (!reader.has(seconds))
            reader.fail(seconds, QStringLiteral("is missing"));
        entry.at = reader.milliseconds(seconds, 0);
        entry.changes = scenario::readMoment(reader);
        reader.done();
        scenario->timeline.push_back(entry);
    }
}

void takeFiles(ObjectReader &root, const JsonDocument &whole, Scenario *scenario)
{
    scenario->files = scenario::readFiles(root.object(QStringLiteral("files")), whole);
}

void addTable(QString *text, const QString &title, const KeyRows &rows)
{
    bool anyChanges = false;
    for (const KeyRow &row : rows)
        anyChanges = anyChanges || row.changes;
    *text += QStringLiteral("\n### ") + title + QStringLiteral("\n\n| key | type | default |");
    *text += anyChanges ? QStringLiteral(" `at` |") : QString();
    *text += QStringLiteral(" meaning |\n|---|---|---|---|");
    *text += anyChanges ? QStringLiteral("---|\n") : QStringLiteral("\n");
    for (const KeyRow &row : rows) {
        const QString otherwise = row.otherwise.isEmpty() ? QStringLiteral("empty") : row.otherwise;
        QStringList cells{'`' + row.key + '`', row.type, otherwise};
        if (anyChanges)
            cells.append(row.changes ? QStringLiteral("yes") : QString());
        cells.append(row.meaning);
        *text += QStringLiteral("| ") + cells.join(QStringLiteral(" | ")) + QStringLiteral(" |\n");
    }
}

} // namespace

const std::vector<scenario::ScenarioKey> &scenario::scenarioKeys()
{
    static const std::vector<ScenarioKey> keys{
        {{"title", "text", "required", "what a person sees, in one line"}, takeTitle},
        {{"pc", "object", "below", "how the PC is at the beginning"}, takePc},
        {{"steam", "object", "below", "Steam on it"}, takeSteam},
        {{"steamVR", "object", "below", "SteamVR on it"}, takeSteamVr},
        {{"streamingServer", kinds::oneOf({"sim", "external", "never"}) + ", or an object", "`sim`",
          "the streaming server, above and below"},
         takeServer},
        {{"adb", kinds::oneOf({"sim", "none"}) + ", or an object", "`sim`",
          "`sim`: adb is found on the search path; `none`: it is not"},
         takeAdb},
        {{"cloud", "text", "`normal`",
          "what the vendor cloud answers: `cloud-sim --answers` (`peers/README.md`), or `absent` "
          "when nobody is there. `./run` starts it; `simpc-seed --cloud SCENARIO` says the word"},
         takeCloud},
        {{"at", "list of objects", "empty", "what changes later"}, takeTimeline},
        {{"files", "object", "below", "the files for `simpc-seed`"}, takeFiles},
    };
    return keys;
}

QString scenario::keysText()
{
    KeyRows whole;
    for (const ScenarioKey &key : scenarioKeys())
        whole.push_back(key.row);
    KeyRows moment{{seconds, "time", "required", "from the start of the assistant"}};
    for (const KeyRow &row : momentKeys())
        moment.push_back({row.key, row.type, row.otherwise, row.meaning});
    QString text = QStringLiteral("## The keys of a scenario\n");
    addTable(&text, QStringLiteral("The whole file"), whole);
    addTable(&text, QStringLiteral("`pc`"), pcKeys());
    addTable(&text, QStringLiteral("`at`, with those of `pc` that say so"), moment);
    addTable(&text, QStringLiteral("`steam`"), steamKeys().rows());
    addTable(&text, QStringLiteral("`steamVR`"), steamVrKeys().rows());
    addTable(&text, QStringLiteral("`streamingServer`"), serverKeys().rows());
    addTable(&text, QStringLiteral("`headsets` of `streamingServer`"), headsetKeys().rows());
    addTable(&text, QStringLiteral("`adb`"), adbKeys().rows());
    addTable(&text, QStringLiteral("`files`"), fileKeys());
    return text;
}
