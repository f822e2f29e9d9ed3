// The installed program on a PC with Steam and SteamVR, that is their stand-ins.
#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRect>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace installed_program {

constexpr int limit = 120000; // ms, for whatever is waited for

// Puts the program into C:\中 文 & é, Steam and SteamVR where they belong, and all
// of them into the registry. Once a PC; false when something is in the way.
bool installAll();

// Where the registry says that Steam and SteamVR are; installAll() puts it right.
bool sayWhereSteamIs(const QString &folder);
bool sayWhereSteamVrIs(const QString &folder);
QString steamProgram(); // steam.exe, and vrstartup.exe, where they really are
QString steamVrTool();

QString programFolder();     // where the program and its working folder are
QString dataFolder();        // where it keeps its files; in a folder with a blank and Chinese
QString openVrPaths();       // OpenVR's file
QString serverLog();         // what the streaming server notes
QString steamsEnvironment(); // what Steam was started with, a variable a line

// Lays out the files that an earlier run would have left, among them the choice
// of the wireless mode unless `modeChosen` is false; removes logs and notes.
bool layOutFiles(bool modeChosen);

// Whether a process of that name runs.
bool runs(const QString &name);
QStringList allProcesses();
// Ends every process of that name.
void end(const QString &name);
// Ends all of Steam and SteamVR, as a user does, until nothing of them runs.
bool endSteam();

QByteArray content(const QString &path);
QJsonObject json(const QString &path);
QString log(); // of all days

// Looks every now and then whether `condition` holds, until it does; false when
// it has not within the limit.
bool waitUntil(const std::function<bool()> &condition);

// One run of the program.
class Copy
{
public:
    Copy();
    ~Copy(); // kills what still runs

    // What it finds in its environment besides, before start(). What is in `PATH`
    // stands before the system's folders.
    void putIntoEnvironment(const QString &name, const QString &value);
    void setWorkingFolder(const QString &folder) { process_.setWorkingDirectory(folder); }
    bool start();
    qint64 pid() const { return process_.processId(); }
    bool isRunning();
    // The place of its window on the screen; nothing while there is none.
    std::optional<QRect> window() const;
    // Whether the system shows a message box for it.
    bool showsMessageBox() const;
    // As Alt+F4 or the task bar do.
    void askToClose() const;
    void kill();
    // Its exit code, or nothing when it has not ended within the limit or not
    // by itself.
    std::optional<int> waitForEnd();
    // From start() until the end was seen.
    qint64 lifeTime() const { return lifeTime_; }

private:
    QProcess process_;
    qint64 started_ = 0;
    qint64 lifeTime_ = 0;
};

} // namespace installed_program
