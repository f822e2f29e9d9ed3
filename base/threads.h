// Threads of our own, where the system may have none to give: its memory, or what it
// lets a process or a user have, is used up.
#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <thread>

namespace threads {

// Runs `work` on a thread of its own, which the caller joins or lets go. Where there is
// none to be had the result is not joinable, `work` is dropped, the log says what for
// (`purpose`, a few words) and why, and missing() names it. Any thread.
[[nodiscard]] std::thread begin(const char *purpose, std::function<void()> work);

// The same for whom the log itself is waiting: without a word.
[[nodiscard]] std::thread beginQuietly(std::function<void()> work);

// For a thread that is begun in another way: whether it may be tried, and what came of
// it. `reason` is the system's, in its words. Any thread.
bool mayBegin();
void noteBegun(const char *purpose);
void noteMissing(const char *purpose, const QString &reason);

// The purposes that have no thread now. Any thread.
QStringList missing();
// Why the last one could not be had; empty when all could. Any thread.
QString lastReason();

// While one lives there is none to be had. Any thread.
class NoneToHave
{
public:
    NoneToHave();
    ~NoneToHave();
    NoneToHave(const NoneToHave &) = delete;
    NoneToHave &operator=(const NoneToHave &) = delete;
};

} // namespace threads
