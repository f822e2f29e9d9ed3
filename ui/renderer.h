// What draws the windows: OpenGL, or the processor where OpenGL is missing.
#pragma once

#include <QString>

#include <chrono>
#include <optional>

class Clock;

namespace renderer {

// What asking the graphics driver came to.
struct Probe
{
    bool usable = false;   // there is a context, and it can be made current
    int major = 0;         // of its OpenGL version
    bool complete = false; // it has the shaders and buffers that Qt Quick needs
};

// Why windows cannot be drawn with that, for the log; empty when they can.
QString shortcoming(const Probe &probe);

// Makes a context as Qt Quick will, and lets go of it. GUI thread, after the
// application object.
Probe probe();

// Whether the environment says how to draw. Then it is right, and nobody asks.
bool isChosenByEnvironment();

// How long ago a start ended while it tried OpenGL; whether that is reason enough
// not to try again. Once a day is, for drivers are renewed.
bool isTooSoon(std::optional<std::chrono::seconds> sinceCrash);

// The time in which a broken graphics driver would end the program: from the
// first question to it until the first window is drawn. It leaves a mark, which is
// still there at the next start if the program did not live through it.
//
// Not two at a time. GUI thread.
class Trial
{
public:
    // Decides what draws, and says in the log when that is not OpenGL. After the
    // application object, before the first window. `mark` is the path of the
    // file, whose folder is there; `clock` is only asked here.
    Trial(const QString &mark, const Clock &clock);
    // It went well, or was not needed.
    ~Trial();

    Trial(const Trial &) = delete;
    Trial &operator=(const Trial &) = delete;

private:
    QString choose(const Clock &clock);

    const QString mark_;
    bool marked_ = false;
};

} // namespace renderer
