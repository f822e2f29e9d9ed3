// With which the program ends on a simulated PC, besides its own.
#pragma once

namespace exit_code {

constexpr int badScenario = 2;  // the PC cannot be brought
constexpr int notConnected = 3; // not within the limit
constexpr int noScreenshot = 4; // it was taken, but cannot be saved
constexpr int badLine = 5;      // the script asks for what cannot be done

} // namespace exit_code
