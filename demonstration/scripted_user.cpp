#include "demonstration/scripted_user.h"

#include "base/clock.h"
#include "demonstration/exit_codes.h"

#include <utility>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto askAgain = 50ms;
constexpr auto settleTime = 50ms;  // what a line caused has happened before the next one
constexpr auto longestWait = 120s; // until something has to be ready

} // namespace

ScriptedUser::ScriptedUser(Clock &clock, const script::Scene &scene, Say say, QObject *parent)
    : QObject(parent), clock_(clock), scene_(scene), say_(std::move(say))
{
}

void ScriptedUser::hear(const QByteArray &bytes)
{
    input_.append(bytes);
    for (int end = input_.indexOf('\n'); end >= 0; end = input_.indexOf('\n')) {
        const QString line = QString::fromUtf8(input_.left(end)).trimmed();
        input_.remove(0, end + 1);
        if (!line.isEmpty() && !line.startsWith('#'))
            lines_.enqueue(line);
    }
    if (!busy_)
        next();
}

void ScriptedUser::stop()
{
    lines_.clear();
}

void ScriptedUser::next()
{
    busy_ = !lines_.isEmpty();
    if (!busy_)
        return;
    line_ = lines_.dequeue();
    std::visit([this](const auto &step) { carryOut(step); }, script::read(line_, scene_));
}

void ScriptedUser::carryOut(const script::Pause &pause)
{
    clock_.singleShot(std::chrono::milliseconds(pause.milliseconds), this,
                      [this] { answer(QStringLiteral("ok")); });
}

void ScriptedUser::carryOut(const script::Act &act)
{
    askUntilReady(act, clock_.elapsed());
}

void ScriptedUser::carryOut(const script::Close &)
{
    answer(QStringLiteral("ok"));
    emit closeRequested();
}

void ScriptedUser::carryOut(const script::Senseless &senseless)
{
    fail(senseless.reason);
}

void ScriptedUser::askUntilReady(const script::Act &act, qint64 since)
{
    if (act.ready && !act.ready()) {
        if (std::chrono::milliseconds(clock_.elapsed() - since) > longestWait)
            fail(QStringLiteral("that did not happen"));
        else
            clock_.singleShot(askAgain, this, [this, act, since] { askUntilReady(act, since); });
        return;
    }
    const Reply reply = act.act();
    if (reply.done)
        clock_.singleShot(settleTime, this, [this, reply] { answer(reply.text); });
    else
        fail(reply.text);
}

void ScriptedUser::answer(const QString &text)
{
    say_(QStringLiteral("directed: ") + text);
    next();
}

void ScriptedUser::fail(const QString &reason)
{
    say_(QStringLiteral("directed: failed: %1: %2").arg(line_, reason));
    lines_.clear();
    busy_ = false;
    result_ = exit_code::badLine;
    emit closeRequested();
}
