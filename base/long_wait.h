// A wait that only others can end, and of which somebody is told when it lasts.
#pragma once

#include "base/clock.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace long_wait {

// What is waited for.
struct Subject
{
    QString key;         // which words there are for it
    bool canEnd = false; // whether who waits can end what it waits for
};

// What a person wants done about it.
enum class Choice {
    KeepWaiting, // and not be told again
    EndPrograms, // that are waited for
    GoOn         // as if it were over
};

// One wait that somebody is being told of, until this is destroyed.
class Telling
{
public:
    virtual ~Telling() = default;

    // What was chosen, once it is; never blocks.
    virtual std::optional<Choice> choice() = 0;
};

// Tells somebody of a wait that has lasted for `lasted`; may return nothing.
using Tell = std::function<std::unique_ptr<Telling>(const Subject &subject,
                                                    std::chrono::milliseconds lasted)>;

// Who is told of the waits of the process-wide services; nobody until it is set, which is
// before the first of them is made.
void setProcessTell(Tell tell);
Tell processTell();

// The thread that waits makes one where its wait begins, and asks it in each turn,
// a second apart at most. It need not run an event loop.
class LongWait
{
public:
    // Short enough for whoever is told to be seen within five seconds of the beginning.
    static constexpr std::chrono::milliseconds patience{3000};

    // `clock` outlives this object; without `tell` nobody is ever told.
    LongWait(const Clock &clock, Subject subject, Tell tell);
    ~LongWait(); // nobody is told any longer

    LongWait(const LongWait &) = delete;
    LongWait &operator=(const LongWait &) = delete;

    // What is to be done now; KeepWaiting unless a person chose something else, and
    // each choice is handed out once. After EndPrograms a wait that goes on is told
    // of anew, as long as the first time after it.
    [[nodiscard]] Choice turn();

private:
    std::chrono::milliseconds lasted() const;

    const Clock &clock_;
    const Subject subject_;
    Tell tell_;
    const std::chrono::milliseconds begin_;
    std::chrono::milliseconds due_ = patience;
    std::unique_ptr<Telling> telling_;
};

} // namespace long_wait
