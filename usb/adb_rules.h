// What adb's output means and what is done next, apart from the process that
// prints it.
#pragma once

#include <QString>
#include <QStringList>

namespace adb_rules {

// What is being waited for.
enum State {
    Idle = 0,
    AwaitingVersion = 1, // the answer to "adb --version"
    AwaitingDevices = 2, // the device list
    Forwarding = 4       // the ports are being set up
};

// Whose adb is used.
enum Mode {
    Shipped = 0,       // the one beside this program
    OnSearchPath = 1,  // the one that the system finds by its name
    AlreadyRunning = 2 // the one of a server that somebody else started
};

// How far the answer to the version query may still be waited for.
enum Grace { NotGiven = 0, Running = 1, Over = 2 };

struct AdbState
{
    int state = Idle;
    int mode = Shipped;
    int grace = NotGiven;
    unsigned int retries = 0;                 // checks that found no answer to the last one
    QString serial = QStringLiteral("wired"); // last reported headset; empty: none
};

// One check for headsets.
struct Check
{
    enum Action { Nothing, GiveGrace, AskForDevices };
    AdbState next;
    Action action = Nothing;
    bool useShipped = false; // the version query was never answered, and is given up
    bool giveUp = false;     // so is the question for devices
};
[[nodiscard]] Check check(AdbState now);

// One chunk of output, with CR LF at the ends of its lines. Whatever it says,
// the state becomes idle a moment later.
struct Answer
{
    enum Action {
        Nothing,
        UseLocal,      // the adb on the search path answered
        RestartAdb,    // a headset hangs; only a new server gets it back
        SetUpPorts,    // the list of forwards came back empty
        ReportGone,    // the last headset was detached
        ReportHeadset, // next.serial was attached
    };
    AdbState next;
    Action action = Nothing;
};
[[nodiscard]] Answer answer(AdbState now, const QString &text);

// The forwards in a chunk of output, "serial local remote" each, that are not among
// those that we set up.
QStringList foreignForwards(const QString &text);

// Whether `path` is one word of a command line. One with a blank is not, nor one
// with what the interpreter takes for a blank (",", ";", "="), for a variable
// ("%") or for the bounds of a block (parentheses): a caret in front of these
// means something else in every place and on every version, so that there the
// process's working folder has to lead to adb.
bool isWord(const QString &path);

// The command line that runs `command`, in which adb is called "adb". `path`
// is the adb in use as the command interpreter has to read it; where it is no
// word the command stays as it is.
QString commandLine(const QString &command, int mode, const QString &path);

// The working folder for the adb at `path`; empty when none is needed.
QString workingFolder(const QString &path);

} // namespace adb_rules
