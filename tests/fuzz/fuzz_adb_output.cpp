// Any output of adb in any pieces, with checks in between: the machine stays
// within its states, and reports what it keeps.
#include "tests/fuzz/require.h"
#include "usb/adb_rules.h"

#include <QByteArray>

#include <cstdint>

using adb_rules::AdbState;
using adb_rules::Answer;
using adb_rules::Check;

namespace {

void requireSound(const AdbState &now)
{
    REQUIRE(now.state == adb_rules::Idle || now.state == adb_rules::AwaitingVersion ||
            now.state == adb_rules::AwaitingDevices || now.state == adb_rules::Forwarding);
    REQUIRE(now.mode >= adb_rules::Shipped && now.mode <= adb_rules::AlreadyRunning);
    REQUIRE(now.retries < 3);
}

void check(AdbState *now)
{
    const AdbState before = *now;
    const Check made = adb_rules::check(before);
    *now = made.next;
    REQUIRE(now->serial == before.serial);
    REQUIRE((made.action == Check::GiveGrace) ==
            (before.state == adb_rules::AwaitingVersion && before.grace == adb_rules::NotGiven));
    if (made.action == Check::AskForDevices)
        REQUIRE(before.state == adb_rules::Idle || made.useShipped);
    if (made.action == Check::GiveGrace)
        now->grace = adb_rules::Over;
}

void answer(AdbState *now, const QByteArray &chunk)
{
    const AdbState before = *now;
    const Answer made = adb_rules::answer(before, QString::fromLatin1(chunk));
    *now = made.next;
    REQUIRE((made.action == Answer::UseLocal) == (before.state == adb_rules::AwaitingVersion));
    REQUIRE((made.action == Answer::SetUpPorts) ==
            (now->state == adb_rules::Forwarding && before.state != adb_rules::Forwarding));
    const bool reported = made.action == Answer::ReportGone || made.action == Answer::ReportHeadset;
    REQUIRE(reported == (now->serial != before.serial));
    if (made.action == Answer::ReportGone)
        REQUIRE(now->serial.isEmpty());
    if (before.state != adb_rules::AwaitingDevices)
        REQUIRE(!reported && made.action != Answer::RestartAdb);
}

} // namespace

// The first byte chooses the mode; then each 0x01 is a check, each 0x02 the
// moment after an output, and what lies between is a chunk.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size == 0)
        return 0;
    AdbState now;
    now.mode = data[0] % 2 == 0 ? adb_rules::OnSearchPath : adb_rules::AlreadyRunning;
    now.state = data[0] % 2 == 0 ? adb_rules::AwaitingVersion : adb_rules::Idle;
    QByteArray chunk;
    for (size_t i = 1; i <= size; ++i) {
        if (i < size && data[i] > 2) {
            chunk += static_cast<char>(data[i]);
            continue;
        }
        if (!chunk.isEmpty())
            answer(&now, chunk);
        chunk.clear();
        requireSound(now);
        if (i < size && data[i] == 1)
            check(&now);
        else
            now.state = adb_rules::Idle;
        requireSound(now);
    }
    return 0;
}
