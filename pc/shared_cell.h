// The named shared-memory cell through which the streaming side says that
// SteamVR's server is up.
#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>
#include <optional>

class SharedCell
{
public:
    SharedCell();
    ~SharedCell(); // as destroy()

    SharedCell(const SharedCell &) = delete;
    SharedCell &operator=(const SharedCell &) = delete;

    // Opens or makes the cell; false when the system refuses, and then read()
    // and write() do nothing. A cell that the other side made first keeps its
    // value; one of ours starts empty.
    bool create();

    // Asked each quarter of a second while another program holds the cell's mutex:
    // whether to go on waiting for it. Empty: without a limit.
    using GoesOn = std::function<bool()>;

    // The value; nothing while the cell is empty or not there, or when `goesOn`
    // gave up. Any thread.
    std::optional<quint32> read(const GoesOn &goesOn = {}) const;
    // False when the cell is not there, or when `goesOn` gave up.
    bool write(quint32 value, const GoesOn &goesOn = {});

    void destroy();

private:
    struct Handles;
    std::unique_ptr<Handles> handles_;
};
