#include "checks/assessment.h"

#include <algorithm>
#include <cstring>

namespace checks {

namespace {

// The causes that are there, whether they are themselves explained or not.
using Present = std::vector<const char *>;

bool explained(const Check &check, const Present &present)
{
    const auto isPresent = [&](const char *cause) {
        return std::any_of(present.begin(), present.end(),
                           [cause](const char *id) { return std::strcmp(id, cause) == 0; });
    };
    return std::any_of(check.causes.begin(), check.causes.end(), isPresent);
}

// What comes first: a stage's number, or behind all of them what keeps the
// connection from nothing just now.
int rank(const Check &check, const Facts &facts)
{
    if (!check.blocks || facts.has(*check.blocks))
        return stageCount;
    return static_cast<int>(*check.blocks);
}

} // namespace

Assessment assess(const Table &table, const Facts &facts, const HeldSince &before,
                  std::chrono::milliseconds now)
{
    Assessment result;
    result.heldSince.resize(table.size());
    Present present;
    for (size_t row = 0; row < table.size(); ++row) {
        const Check &check = table[row];
        Found found = check.find(facts);
        if (!found)
            continue;
        const bool hasCause = explained(check, present);
        present.push_back(check.id);
        if (hasCause)
            continue;
        const std::chrono::milliseconds since =
            row < before.size() ? before[row].value_or(now) : now;
        result.heldSince[row] = since;
        if (now - since >= check.hold)
            result.findings.push_back({&check, std::move(*found)});
    }
    std::stable_sort(
        result.findings.begin(), result.findings.end(), [&](const Finding &a, const Finding &b) {
            const int rankA = rank(*a.check, facts);
            const int rankB = rank(*b.check, facts);
            return rankA != rankB ? rankA < rankB : a.check->severity > b.check->severity;
        });
    return result;
}

} // namespace checks
