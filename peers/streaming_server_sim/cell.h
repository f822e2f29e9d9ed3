// The shared-memory cell that says "SteamVR's server is up".
#pragma once

#include <memory>
#include <string>

// Opens the cell at `place` for as long as the object lives: on Windows the
// cell's real name, whatever `place` says, elsewhere the file of a simulated
// PC's cell (UTF-8).
class Cell
{
public:
    explicit Cell(const std::string &place);
    ~Cell();

    Cell(const Cell &) = delete;
    Cell &operator=(const Cell &) = delete;

    // Writes 1; false when the cell cannot be had.
    bool sayUp();

private:
    struct Access;
    std::unique_ptr<Access> access_;
};
