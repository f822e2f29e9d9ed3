#include "pc/shell_launch.h"

#include "simpc/sim_pc.h"

#include <algorithm>

namespace shell_launch {

namespace {

// As an English Windows says it.
QString textOf(unsigned error)
{
    switch (error) {
    case 2:
        return QStringLiteral("The system cannot find the file specified.");
    case 3:
        return QStringLiteral("The system cannot find the path specified.");
    case 193:
        return QStringLiteral("%1 is not a valid Win32 application.");
    default:
        return {};
    }
}

// False when whoever waits gave up.
bool sleepFor(std::chrono::milliseconds duration, Clock &clock, const std::function<bool()> &goesOn)
{
    constexpr std::chrono::milliseconds turn(250);
    while (goesOn && duration > turn) {
        clock.sleep(turn);
        duration -= turn;
        if (!goesOn())
            return false;
    }
    clock.sleep(duration);
    return true;
}

} // namespace

Outcome openHiddenAndWait(const QString &program, const QString &parameters,
                          std::chrono::milliseconds limit, const std::function<bool()> &goesOn)
{
    SimPc &pc = SimPc::current();
    const qint64 start = pc.timeline.clock().elapsed();
    const SimLaunchResult result = pc.launches.start({program, parameters, true});
    Outcome outcome;
    outcome.started = result.started;
    outcome.startError = result.error;
    outcome.startErrorText = textOf(result.error);
    if (result.started && result.hasHandle) {
        const bool ends = result.endsAfter >= 0 && result.endsAfter <= limit.count();
        const auto wait = ends ? std::chrono::milliseconds(result.endsAfter) : limit;
        const bool isOver = sleepFor(wait, pc.timeline.clock(), goesOn);
        outcome.wait = !isOver ? Outcome::GivenUp : ends ? Outcome::Ended : Outcome::TimedOut;
    }
    outcome.elapsed = std::chrono::milliseconds(pc.timeline.clock().elapsed() - start);
    return outcome;
}

bool startDetached(const QString &program, const QStringList &arguments)
{
    return SimPc::current().launches.start({program, arguments.join(' '), false}).started;
}

} // namespace shell_launch
