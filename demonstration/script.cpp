#include "demonstration/script.h"

#include "controller/connection_stages.h"

#include <QStringList>

namespace script {
namespace {

// What is written for it in the tables.
QString placeholder(Argument argument)
{
    switch (argument) {
    case Argument::None:
        return {};
    case Argument::Seconds:
        return QStringLiteral("SECONDS");
    case Argument::Name:
        return QStringLiteral("NAME");
    case Argument::Dialog:
    case Argument::File:
        return QStringLiteral("FILE");
    case Argument::Keys:
        return QStringLiteral("KEYS");
    case Argument::Text:
        return QStringLiteral("TEXT");
    case Argument::Condition:
        return QStringLiteral("CONDITION");
    }
    return {};
}

template <typename Row>
QString pattern(const Row &row)
{
    return (row.name + QLatin1Char(' ') + placeholder(row.argument)).trimmed();
}

// "NAME" or "NAME 2"; nothing for anything else.
std::optional<ItemName> itemName(const QString &text)
{
    const QStringList words = text.split(' ', Qt::SkipEmptyParts);
    if (words.isEmpty() || words.size() > 2)
        return std::nullopt;
    const int number = words.size() == 2 ? words[1].toInt() : 1;
    if (number < 1)
        return std::nullopt;
    return ItemName{words[0], number};
}

bool fits(Argument argument, const QString &text)
{
    switch (argument) {
    case Argument::None:
        return text.trimmed().isEmpty();
    case Argument::Seconds: {
        bool isNumber = false;
        return text.toDouble(&isNumber) >= 0 && isNumber;
    }
    case Argument::Name:
        return itemName(text).has_value();
    case Argument::Dialog:
    case Argument::File:
    case Argument::Keys:
    case Argument::Text:
    case Argument::Condition:
        return !text.trimmed().isEmpty();
    }
    return false;
}

// The row of the longest name with which `line` begins; null when there is none.
template <typename Row>
const Row *rowOf(const QString &line, const std::vector<Row> &rows)
{
    const Row *found = nullptr;
    for (const Row &row : rows) {
        const bool begins = line == row.name || line.startsWith(row.name + QLatin1Char(' '));
        if (begins && (!found || row.name.size() > found->name.size()))
            found = &row;
    }
    return found;
}

// As it stands in the line: a text may begin with a blank.
template <typename Row>
QString argumentOf(const QString &line, const Row &row)
{
    return line.mid(row.name.size() + 1);
}

// What to say of a line that does not follow `pattern`.
Senseless misses(const QString &pattern)
{
    return {QStringLiteral("it has to be \"%1\"").arg(pattern)};
}

Step act(std::function<Reply()> what)
{
    return Act{{}, std::move(what)};
}

// Something that cannot fail.
Step act(Screen &screen, void (Screen::*what)())
{
    return act([&screen, what] {
        (screen.*what)();
        return Reply();
    });
}

Reply notShown()
{
    return Reply::cannot(QStringLiteral("nothing of that name is shown"));
}

Step untilSo(const Scene &scene, const QString &text)
{
    const QString line = text.trimmed();
    const Condition *condition = rowOf(line, conditions());
    if (!condition || (condition->ofTheStages && !scene.stages))
        return Senseless{QStringLiteral("there is no such condition")};
    const QString argument = argumentOf(line, *condition);
    if (!fits(condition->argument, argument))
        return misses(QStringLiteral("until ") + pattern(*condition));
    return Act{[scene, condition, argument] { return condition->holds(scene, argument); },
               [] { return Reply(); }};
}

Step click(const Scene &scene, const QString &name)
{
    return act([&screen = scene.screen, item = *itemName(name)] {
        return screen.click(item) ? Reply() : notShown();
    });
}

Step where(const Scene &scene, const QString &name)
{
    return act([&screen = scene.screen, item = *itemName(name)] {
        const std::optional<QPoint> middle = screen.middleOf(item);
        return middle ? Reply::answer(QStringLiteral("at %1 %2").arg(middle->x()).arg(middle->y()))
                      : notShown();
    });
}

bool isShown(const Scene &scene, const QString &name)
{
    return scene.screen.middleOf(*itemName(name)).has_value();
}

template <Stage stage>
bool reached(const Scene &scene, const QString &)
{
    return scene.stages->reached(stage);
}

} // namespace

const std::vector<Verb> &verbs()
{
    static const std::vector<Verb> table = {
        {"wait", Argument::Seconds, "waits, in the program's time",
         [](const Scene &, const QString &seconds) -> Step {
             return Pause{static_cast<int>(seconds.toDouble() * 1000)};
         }},
        {"until", Argument::Condition,
         "waits until that is so, 120 seconds of the program's time at most", untilSo},
        {"click", Argument::Name, "clicks into the middle of the item", click},
        {"key", Argument::Keys, "a key for the window in front: `Tab`, `Shift+Tab`, `Return`",
         [](const Scene &scene, const QString &keys) {
             return act([&screen = scene.screen, keys] { return screen.pressKeys(keys); });
         }},
        {"type", Argument::Text, "a text for the window in front, letter by letter",
         [](const Scene &scene, const QString &text) {
             return act([&screen = scene.screen, text] { return screen.typeText(text); });
         }},
        {"activate", Argument::None, "takes the main window to the front",
         [](const Scene &scene, const QString &) { return act(scene.screen, &Screen::activate); }},
        {"minimise", Argument::None, "minimises the main window",
         [](const Scene &scene, const QString &) { return act(scene.screen, &Screen::minimise); }},
        {"hide", Argument::None, "hides the main window",
         [](const Scene &scene, const QString &) { return act(scene.screen, &Screen::hide); }},
        {"show", Argument::None, "shows it again",
         [](const Scene &scene, const QString &) { return act(scene.screen, &Screen::show); }},
        {"where", Argument::Name, "answers `at X Y`, the middle of the item on the screen", where},
        {"picture", Argument::File,
         "takes a picture of all windows, as they lie upon each other, as PNG",
         [](const Scene &scene, const QString &file) -> Step {
             // A window that is shown but not on the screen yet has nothing to
             // show.
             return Act{[&screen = scene.screen] { return screen.isComplete(); },
                        [&screen = scene.screen, file] { return screen.takePicture(file); }};
         }},
        {"frames", Argument::None,
         "answers `frames N`, what the main window has drawn since it was asked before",
         [](const Scene &scene, const QString &) {
             return act([&screen = scene.screen] {
                 return Reply::answer(QStringLiteral("frames %1").arg(screen.framesDrawn()));
             });
         }},
        {"close", Argument::None, "closes the program as its close button does",
         [](const Scene &, const QString &) -> Step { return Close(); }},
    };
    return table;
}

const std::vector<Condition> &conditions()
{
    static const std::vector<Condition> table = {
        {"shown", Argument::Name, "the item is shown", isShown},
        {"hidden", Argument::Name, "it is not",
         [](const Scene &scene, const QString &name) { return !isShown(scene, name); }},
        {"dialog", Argument::Dialog, "the dialog of that file is shown, `SettingPage` for example",
         [](const Scene &scene, const QString &file) {
             return scene.screen.dialog() == file.trimmed();
         }},
        {"nodialog", Argument::None, "no dialog is shown",
         [](const Scene &scene, const QString &) { return scene.screen.dialog().isEmpty(); }},
        {"toast", Argument::None, "a toast is shown",
         [](const Scene &scene, const QString &) { return scene.screen.toast() == true; }},
        {"toast gone", Argument::None, "none is",
         [](const Scene &scene, const QString &) { return scene.screen.toast() == false; }},
        {"steam", Argument::None, "Steam runs", reached<Stage::Steam>, true},
        {"steamvr", Argument::None, "SteamVR runs", reached<Stage::SteamVR>, true},
        {"server", Argument::None, "the streaming server is on the control port",
         reached<Stage::Server>, true},
        {"headset", Argument::None, "it reports a headset", reached<Stage::Headset>, true},
        {"linked", Argument::None, "a headset is connected", reached<Stage::Linked>, true},
    };
    return table;
}

Step read(const QString &line, const Scene &scene)
{
    const Verb *verb = rowOf(line, verbs());
    if (!verb)
        return Senseless{QStringLiteral("there is no such word")};
    const QString argument = argumentOf(line, *verb);
    if (!fits(verb->argument, argument))
        return misses(pattern(*verb));
    return verb->step(scene, argument);
}

QString tables()
{
    QString text = QStringLiteral("| line | does |\n|---|---|\n");
    for (const Verb &verb : verbs())
        text += QStringLiteral("| `%1` | %2 |\n").arg(pattern(verb), verb.help);
    text += QStringLiteral("\n| `CONDITION` | holds when |\n|---|---|\n");
    for (const Condition &condition : conditions())
        text += QStringLiteral("| `%1` | %2 |\n").arg(pattern(condition), condition.help);
    return text;
}

} // namespace script
