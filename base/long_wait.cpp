#include "base/long_wait.h"

#include <utility>

namespace long_wait {

namespace {

Tell &ofThisProcess()
{
    static Tell &tell = *new Tell; // services wait until the very end
    return tell;
}

} // namespace

void setProcessTell(Tell tell)
{
    ofThisProcess() = std::move(tell);
}

Tell processTell()
{
    return ofThisProcess();
}

LongWait::LongWait(const Clock &clock, Subject subject, Tell tell)
    : clock_(clock), subject_(std::move(subject)), tell_(std::move(tell)), begin_(clock.elapsed())
{
}

LongWait::~LongWait() = default;

std::chrono::milliseconds LongWait::lasted() const
{
    return std::chrono::milliseconds(clock_.elapsed()) - begin_;
}

Choice LongWait::turn()
{
    if (!telling_) {
        if (!tell_ || lasted() < due_)
            return Choice::KeepWaiting;
        telling_ = tell_(subject_, lasted());
        if (!telling_)
            tell_ = nullptr;
        return Choice::KeepWaiting;
    }
    const std::optional<Choice> choice = telling_->choice();
    if (!choice)
        return Choice::KeepWaiting;
    telling_.reset();
    due_ = lasted() + patience;
    if (*choice == Choice::KeepWaiting)
        tell_ = nullptr;
    return *choice;
}

} // namespace long_wait
