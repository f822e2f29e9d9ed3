// A check: one thing that may stand between this PC and a picture in the
// headset, as a row of a table.
#pragma once

#include "checks/facts.h"
#include "checks/stage.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace checks {
Q_NAMESPACE

enum class Severity {
    Hint,    // could be better
    Warning, // streaming suffers from it
    Error    // streaming is impossible with it
};
Q_ENUM_NS(Severity)

// Where the user meets a finding.
enum class Surface {
    Own, // it has a dialog, a toast or a place on a card of its own
    Card // the window's place for findings
};
Q_ENUM_NS(Surface)

struct Action
{
    Q_GADGET

public:
    enum Kind {
        None,
        CheckAgain,   // ask the PC anew
        OpenUrl,      // the target, with what the system has for it
        OpenPage,     // the dialog that the target names, "SystemInfoPage"
        InstallSteam, // where Steam can be had
        LaunchSteam,
        LaunchSteamVR,
        OpenGuide, // the user guide
    };
    Q_ENUM(Kind)

    Kind kind = None;
    const char *label = ""; // as the texts of Check
    const char *target = "";
};

// One fact that a finding rests on. A label is a text of the context "Checks".
struct Evidence
{
    const char *label = "";
    QString value;
};

// What there is to say for a finding; nothing when all is well, or not known.
using Found = std::optional<std::vector<Evidence>>;

// A question that costs: it is asked on a thread of its own. Rows may share one.
struct Question
{
    enum When {
        AtStart,     // when the program begins its work
        WhileHanging // while the connection gets no further
    };
    When when = WhileHanging;
    // Not sooner than this is it asked again, which happens while the finding
    // stands, so that it goes away when it is over, and while the connection
    // hangs.
    std::chrono::milliseconds again{0};

    // Puts what was learned into the facts, on the thread that owns them.
    using Answer = std::function<void(Facts &)>;
    // May take seconds; logs nothing. `known` is what was known when it was put.
    std::function<Answer(const Facts &known)> ask;
};

// Texts are source texts of the translation context "Checks"; %1 stands for the
// first evidence's value, and so on.
struct Check
{
    const char *id = "";
    Severity severity = Severity::Warning;
    // The stage that cannot be reached with it, if it is one.
    std::optional<Stage> blocks;
    // The checks that explain this one: while one of them finds something, this
    // one is silent. They come before it in the table.
    std::vector<const char *> causes;
    // How long it must be so before anybody is bothered.
    std::chrono::milliseconds hold{0};
    Surface surface = Surface::Card;
    const char *title = "";
    const char *text = "";
    Action action;
    const Question *question = nullptr; // what `find` needs asked, if anything
    // Pure.
    Found (*find)(const Facts &facts) = nullptr;
};

using Table = std::vector<Check>;

} // namespace checks
