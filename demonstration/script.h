// The lines of a script: which there are and what each of them means. How they
// are carried out one after another is the scripted user's (scripted_user.h).
#pragma once

#include "demonstration/screen.h"

#include <QString>

#include <functional>
#include <variant>
#include <vector>

class ConnectionStages;

// GUI thread.
namespace script {

// What a line is carried out on.
struct Scene
{
    Screen &screen;
    const ConnectionStages *stages = nullptr; // null in a second copy
};

// Nothing happens for that long.
struct Pause
{
    int milliseconds;
};
// `act` is done once `ready` holds.
struct Act
{
    std::function<bool()> ready; // empty: at once
    std::function<Reply()> act;
};
// The program closes.
struct Close
{
};
// It means nothing.
struct Senseless
{
    QString reason;
};
using Step = std::variant<Pause, Act, Close, Senseless>;

// What follows a name in a line.
enum class Argument { None, Seconds, Name, Dialog, File, Keys, Text, Condition };

struct Verb
{
    QString name;
    Argument argument;
    QString help; // for people: what it does
    // `argument` is as it has to be.
    Step (*step)(const Scene &scene, const QString &argument);
};

struct Condition
{
    QString name;
    Argument argument;
    QString help; // for people: when it holds
    bool (*holds)(const Scene &scene, const QString &argument);
    bool ofTheStages = false; // there is none in a second copy
};

const std::vector<Verb> &verbs();
const std::vector<Condition> &conditions();

// The step that `line` asks for, which is neither empty nor begins or ends with
// a blank. `scene` has to be there as long as the step is kept.
Step read(const QString &line, const Scene &scene);

// Both tables for people, in Markdown: demonstration/README.md holds them.
QString tables();

} // namespace script
