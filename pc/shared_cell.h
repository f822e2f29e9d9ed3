// The named shared-memory cell through which the streaming side says that
// SteamVR's server is up.
#pragma once

#include <QtGlobal>

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

    // The value; nothing while the cell is empty or not there. Waits for the
    // cell's mutex without a limit, as write() does. Any thread.
    std::optional<quint32> read() const;
    // False when the cell is not there.
    bool write(quint32 value);

    void destroy();

private:
    struct Handles;
    std::unique_ptr<Handles> handles_;
};
