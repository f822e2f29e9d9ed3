// What the checks find, given the facts. Pure.
#pragma once

#include "checks/check.h"

#include <chrono>
#include <optional>
#include <vector>

namespace checks {

struct Finding
{
    const Check *check = nullptr; // a row of the table that was assessed
    std::vector<Evidence> evidence;
};

// For each row of a table since when it has found something without a break;
// empty in the beginning.
using HeldSince = std::vector<std::optional<std::chrono::milliseconds>>;

struct Assessment
{
    HeldSince heldSince; // for the next time
    // What to show, the most likely cause first: what blocks the connection now,
    // by its stage; then the rest; among equals the more severe one, then the
    // table's order.
    std::vector<Finding> findings;
};

// `now` is a time of Clock::elapsed(). A row that another one explains is not
// found, however long it has been so; it begins to hold when its cause is gone.
Assessment assess(const Table &table, const Facts &facts, const HeldSince &before,
                  std::chrono::milliseconds now);

} // namespace checks
