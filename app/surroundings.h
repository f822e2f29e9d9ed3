// What surrounds the program besides Windows itself.
#pragma once

#include <QString>

#include <optional>

class ConnectionStages;
class QQmlApplicationEngine;

// Told by the start-up where it has got to, on the GUI thread. On Windows
// nothing surrounds the program, which is what this class itself does.
// Elsewhere somebody has to bring the PC, show what the program does, and work
// it. Outlives the application object.
class Surroundings
{
public:
    Surroundings() = default;
    virtual ~Surroundings() = default;

    Surroundings(const Surroundings &) = delete;
    Surroundings &operator=(const Surroundings &) = delete;

    // Before the application object, and before anything asks the PC. When
    // there is no going on, the exit code with which the program ends at once.
    [[nodiscard]] virtual std::optional<int> begin() { return std::nullopt; }

    // Once the application object and the log are there, before the program's own
    // parts are made.
    virtual void onApplication() {}

    // Once the pages can read the program, before the first of them is loaded.
    virtual void onPublished(QQmlApplicationEngine & /*engine*/) {}

    // Once the windows are there, before the event loop. `stages` is null in a
    // second copy; both live until the event loop has ended.
    virtual void attach(QQmlApplicationEngine & /*engine*/, const ConnectionStages * /*stages*/) {}

    // Where the vendor cloud is, if the surroundings have one of their own.
    virtual std::optional<QString> cloudHost() const { return std::nullopt; }

    // The exit code of the process, given the event loop's.
    virtual int exitCode(int loopResult) const { return loopResult; }
};
