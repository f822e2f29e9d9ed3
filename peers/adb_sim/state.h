// The folder that says what is on the cable and how adb behaves, and that
// records what adb is asked.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

struct Device
{
    QString serial;
    QString state; // "device", "offline", "unauthorized", ...
};

// Reads the folder anew with every question. ADB_SIM_FOLDER names it.
class State
{
public:
    State();

    // Whether there is such a world: the folder, and, if it has a file "owner",
    // the path that stands in it.
    bool isThere() const;
    // One line per device: serial, TAB, state.
    std::vector<Device> devices() const;
    // What is printed for a call, whatever else is true: the content of the
    // file in "answers/" that is called like the arguments, joined by "_".
    std::optional<QByteArray> recorded(const QStringList &arguments) const;
    // No call ever ends while there is a file "hang".
    bool hangs() const;
    // Adds a line to "calls": program, working folder and arguments as JSON.
    void record(const QStringList &arguments) const;

private:
    QString folder_;
};
